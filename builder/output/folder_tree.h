#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace Lumenfold::Builder {

/// What stands where a folder of the output is wanted.
enum class FolderKind : std::uint8_t {
    Missing,
    Folder,
    Ours,   ///< a file that a build made: it may go
    Blocked ///< a link, or anything else that no build made: nothing is written through it
};

/// The folders below the output folder, each looked at once. Paths are relative, with "/".
class FolderTree {
public:
    /// `is_our_file` tells whether a build made what stands at a path.
    FolderTree(std::filesystem::path root, std::function<bool(std::string_view)> is_our_file);

    /// The kind of the folder that a file lies in. `Blocked` if any on the way is, which `obstacle`
    /// then names.
    FolderKind way_to(std::string_view file, std::string& obstacle);
    /// Whether a folder is on one of the ways asked for.
    bool is_wanted(std::string_view folder) const { return kinds_.contains(folder); }

    /// The folders on the ways asked for that have to be made, the outer before the inner.
    std::vector<std::string> missing() const;
    bool make(const std::string& folder, std::error_code& error);

private:
    FolderKind kind(const std::string& folder);

    std::filesystem::path root_;
    std::function<bool(std::string_view)> is_our_file_;
    std::map<std::string, FolderKind, std::less<>> kinds_;
};

} // namespace Lumenfold::Builder
