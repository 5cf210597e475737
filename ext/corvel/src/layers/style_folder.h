#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

namespace Layers {

/// How many files and folders of a style folder are looked at.
constexpr std::size_t MAX_STYLE_ENTRIES = 100'000;

/// The style files in a folder and all folders below, sorted by path: those that end in ".lyr" and
/// do not begin with "_". What cannot be looked into, a link that leads back to a folder around it
/// and entries beyond the limit are left out, with a line in the log.
std::vector<std::filesystem::path> style_files(const std::filesystem::path& folder);

} // namespace Layers
