#pragma once

#include "builder/report/message.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// One row of a project's versions, as the "versions" command prints it.
struct VersionRow {
    std::string name;     ///< "X.Y"
    std::string tag;      ///< the whole tag; empty for "no-tag"
    std::string released; ///< the declared date, else the tag's; may be empty
    std::string status;   ///< "new", "pending", "complete", "excluded" or "no-tag"
    bool included = false;
    std::string commit; ///< of the tag; empty for "no-tag"
};

/// A project's versions, newest first, and what is to be said of its repository.
struct VersionList {
    std::vector<VersionRow> rows;
    Messages messages;
    bool unversioned = false;            ///< no repository, or none with a version's tag
    std::filesystem::path source_folder; ///< as `source_folder_of` finds it
};

/// Compares what the configuration `project_file` declares and excludes with the repository of its
/// source folder and with the records below "versions". Without a repository that can be asked, and
/// for a tag that a shallow clone may have left behind, a version that is built counts as complete:
/// it can be shown on a machine that has no sources. A folder without versions has no rows.
VersionList list_versions(const std::filesystem::path& project_file);

} // namespace Lumenfold::Builder
