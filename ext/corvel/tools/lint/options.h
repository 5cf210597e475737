#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CorvelLint {

/// The folders to check. Each list may be empty; what needs a list that is empty is not checked.
struct Options {
    std::vector<std::filesystem::path> widgets; ///< style files below the layer "Corvel"
    std::vector<std::filesystem::path> mounts;  ///< style files below the root
    std::vector<std::filesystem::path> styles;  ///< the same, of the application
    std::vector<std::filesystem::path> themes;
    std::vector<std::filesystem::path> icons;
    std::vector<std::string> states; ///< that the application sets
    std::vector<std::string> lists;  ///< that the application fills; empty: not checked
    bool help = false;
    bool attributes = false; ///< write the page of attributes
};

/// Reads the command line without the program's name. Nothing, with `error` set, if it is wrong.
std::optional<Options> parse_options(const std::vector<std::string>& arguments, std::string& error);

extern const std::string_view HELP_TEXT;

} // namespace CorvelLint
