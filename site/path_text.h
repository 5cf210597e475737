#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Lumenfold {

/// The path that a UTF-8 text spells. `std::filesystem::path` itself would read the text in the
/// system's code page on Windows.
std::filesystem::path path_from_utf8(std::string_view text);

/// A path in UTF-8 with the system's separators, as shown to the user.
std::string path_to_utf8(const std::filesystem::path& path);

/// Whether anything at all is there, a dangling link included.
bool is_occupied(const std::filesystem::path& path);

/// A form in which two spellings of one path are equal: absolute, with links resolved as far as
/// the path exists.
std::filesystem::path comparable_path(const std::filesystem::path& path);

/// Whether a path is `folder` or lies below it, both as `comparable_path` gives them.
bool lies_within(const std::filesystem::path& path, const std::filesystem::path& folder);

/// The path that a user typed: "~" at its start means the home folder.
std::filesystem::path path_from_input(std::string_view text);

} // namespace Lumenfold
