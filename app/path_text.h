#pragma once

#include <filesystem>
#include <string>

namespace Lumenfold {

/// The path that a text of the interface means. Texts are UTF-8, whatever the platform's paths are.
inline std::filesystem::path to_path(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

/// A path as the interface shows and stores it, in UTF-8.
inline std::string to_text(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace Lumenfold
