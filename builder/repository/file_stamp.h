#pragma once

#include <filesystem>
#include <string>

namespace Lumenfold::Builder {

/// Tells one state of a file or folder from another without reading it: kind, size, times and
/// inode. Empty if nothing is there. A link is looked at itself. While the last change is so fresh
/// that another one could leave the same times, each stamp differs from all others.
std::string file_stamp(const std::filesystem::path& path);

} // namespace Lumenfold::Builder
