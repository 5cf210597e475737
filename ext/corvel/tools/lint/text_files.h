#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace CorvelLint {

/// Every file with this extension below a folder, sorted. What cannot be looked into is left out.
std::vector<std::filesystem::path> files_below(const std::filesystem::path& folder,
                                               const std::string& extension);

std::string read_text(const std::filesystem::path& file);

/// The line that the byte at `at` stands on, from 1.
std::size_t line_of(std::string_view text, std::size_t at);

} // namespace CorvelLint
