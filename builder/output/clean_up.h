#pragma once

#include "builder/output/folder_tree.h"
#include "builder/output/output_list.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace Lumenfold::Builder {

/// An output folder, by its path and as an open descriptor.
struct OpenFolder {
    std::filesystem::path path;
    int descriptor = -1;
};

/// Removes the files of `old` that `now` does not have, counting them. Stops at the first that
/// cannot be removed, which it gives back. What stands behind a link, or is no file any more, is
/// not ours and stays.
std::string remove_stale_files(const OpenFolder& folder, const OutputList& old,
                               const OutputList& now, FolderTree& tree, std::size_t& removed,
                               std::error_code& error);

/// Removes those of our `folders` that no file of `now` needs, as far as they are empty; gives back
/// those that are needed, in order.
std::vector<std::string> remove_stale_folders(const OpenFolder& folder,
                                              const std::vector<std::string>& folders,
                                              const OutputList& now);

} // namespace Lumenfold::Builder
