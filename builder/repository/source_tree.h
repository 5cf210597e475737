#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold::Builder {

/// What stands at a path of a source tree. Links and submodules are never followed.
enum class EntryKind : std::uint8_t { Missing, File, Folder, Link, Submodule };

/// A project's source folder as it was at one moment: a tag's tree, or the work tree.
///
/// Paths are UTF-8, separated by "/", relative to the source folder, without "." or ".."
/// components; "" is the folder itself. A tree may be read by one thread at a time.
class SourceTree {
public:
    virtual ~SourceTree() = default;

    virtual EntryKind kind(std::string_view path) const = 0;

    /// The bytes of a file; nothing for any other kind, or one that cannot be read.
    virtual std::optional<std::string> read(std::string_view path) const = 0;

    /// The names in a folder, in the order of their bytes; empty for any other kind.
    virtual std::vector<std::string> names(std::string_view folder) const = 0;

    /// Identifies the bytes at a path without reading them where that is possible: equal
    /// identities mean equal bytes. Empty when nothing is there.
    virtual std::string identity(std::string_view path) const = 0;

    /// The source folder's place in the repository: "" at the root, else "sources/gauge/" with the
    /// slash. What a forge's web address of a file needs before the path.
    virtual std::string prefix() const { return {}; }
};

} // namespace Lumenfold::Builder
