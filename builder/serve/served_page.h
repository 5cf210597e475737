#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// Where the script lies that loads a page again, and what it asks.
inline constexpr const char* RELOAD_SCRIPT_PATH = "/.lumenfold/reload.js";
inline constexpr const char* GENERATION_PATH = "/.lumenfold/generation";
/// The style of a problem's words: pages may not carry styles of their own.
inline constexpr const char* STYLE_PATH = "/.lumenfold/serve.css";

/// The script: it asks for the generation of the site twice a second while the page is seen.
std::string_view reload_script();

std::string_view problem_style();

/// A page as it is served: with the script, and with `problem` on top while the last edit kept the
/// site from being made.
std::string served_page(std::string html, std::string_view problem);

} // namespace Lumenfold::Builder
