#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// Formatting elements stand under this prefix while they are parsed (see `is_formatting`).
inline constexpr std::string_view FORMATTING_PREFIX = "x-";

/// Appends a piece of an author's HTML, a whole block or one tag within words, so that it can be
/// parsed together with what follows: a comment, tag or script that the piece leaves open is ended
/// with it, and a tag too long to be one is left out. Gives the number of its tags.
std::size_t append_html_piece(std::string& html, std::string_view piece);

} // namespace Lumenfold::Builder
