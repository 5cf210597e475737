#pragma once

#include "site/json_text.h"
#include "site/project_info.h"
#include "site/result.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace Lumenfold {

/// One entry of a site's registry.
struct ProjectRow {
    std::size_t index = 0;        ///< position in "projects"
    std::filesystem::path config; ///< the entry's reference, resolved
    std::string slug;             ///< empty if the file cannot be read
    std::string parent_slug;
    bool slug_is_text = true; ///< false when the file's "slug" is no string
};

/// The registered projects in their order; none without a list of them. Never fails.
std::vector<ProjectRow> collect_projects(const Json& site_json,
                                         const std::filesystem::path& site_folder);

/// Reads the site that an operation on its registry works on: an object whose "projects" is an
/// array, if it is there at all.
Result read_registry(const std::filesystem::path& site_config_path, Json& site);

/// The registered projects of a site as an operation needs them: each slug a text.
Result registered_projects(const Json& site, const std::filesystem::path& site_config_path,
                           std::vector<ProjectRow>& rows);

/// Registers a project, unless an entry already means the same path.
Result add_project_entry(const std::filesystem::path& path, const std::string& reference);

/// Removes the registry entries that mean one of `references` (absolute configuration paths).
/// Refuses if none does any more.
Result remove_projects(const std::filesystem::path& path,
                       const std::vector<std::filesystem::path>& references);

} // namespace Lumenfold
