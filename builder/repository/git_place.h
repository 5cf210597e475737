#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace Lumenfold::Builder {

/// Where the repository of a folder lies on disk, found by looks at the file system alone.
struct GitPlace {
    std::filesystem::path root;          ///< the top of the work tree, or the bare repository
    std::filesystem::path shared_folder; ///< where tags and objects are, also of linked work trees
    std::string prefix;                  ///< of the folder below `root`: "" or "sources/gauge/"
};

/// The repository that holds `folder`, looking upward as git does; nothing if there is none. A
/// ".git" that is broken counts: whoever opens it says why. A folder that does not exist is looked
/// for in bare repositories only ("gauge.git/sources/core").
std::optional<GitPlace> find_git_place(const std::filesystem::path& folder);

} // namespace Lumenfold::Builder
