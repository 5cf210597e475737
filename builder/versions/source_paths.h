#pragma once

#include "builder/repository/source_tree.h"

#include <optional>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// The folder of a path with its slash: "guides/" for "guides/units.md", "" at the root.
std::string_view folder_of(std::string_view path);
std::string_view file_name_of(std::string_view path);

/// The path that `relative` means when it stands in `folder` ("a/b/" or ""), without "." and ".."
/// and without a slash at its end; nothing if it leads above the root.
std::optional<std::string> joined_path(std::string_view folder, std::string_view relative);

/// The way from one page to another below the same root: "../license.html" from "topics/a.html".
std::string relative_way(std::string_view from_page, std::string_view to);

/// Whether a file's name says that it is Markdown.
bool is_markdown(std::string_view path);

/// What stands at a path, with the link or submodule on the way to it if there is one.
struct Found {
    EntryKind kind = EntryKind::Missing;
    std::string obstacle; ///< the part of the path that is a link or a submodule
};
Found find_in(const SourceTree& tree, std::string_view path);

/// The path that a person probably meant by a missing one; empty if none is near.
std::string nearest_path(const SourceTree& tree, std::string_view missing);

/// `no file "x"; did you mean "y"?`, or that a link or submodule is in the way.
std::string missing_file(const SourceTree& tree, std::string_view path, bool suggest = true);

} // namespace Lumenfold::Builder
