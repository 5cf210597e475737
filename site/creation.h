#pragma once

#include "site/json_file.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold {

/// What a new project or family member is made of.
struct NewProjectRecord {
    std::string name;
    std::string slug;
    std::string tagline;
    std::string parent_slug; ///< empty for a top-level project
    std::string family_label;
};

/// One entry of a site's registry.
struct ProjectRow {
    std::size_t index = 0;        ///< position in "projects"
    std::filesystem::path config; ///< the entry's reference, resolved
    std::string slug;             ///< empty if the file cannot be read
    std::string parent_slug;
};

/// Lower-case ASCII letters and digits in runs joined by single dashes.
bool is_valid_slug(std::string_view text);

/// Reads the registered projects. Throws the JSON library's type error for a "slug" that is no
/// string.
std::vector<ProjectRow> collect_projects(const Json& site_json,
                                         const std::filesystem::path& site_folder);

/// Makes a site's folders and configuration in `folder`. An empty title means "My Site". On
/// failure false, with words for the user in `error`; folders made so far stay.
bool create_site(const std::filesystem::path& folder, const std::string& title, std::string* error);

/// Makes a project's folder and configuration and registers it, a family member right behind its
/// family. `created_path` is the new configuration. On failure false, with words in `error`.
bool create_project(const std::filesystem::path& site_config_path, const NewProjectRecord& record,
                    std::filesystem::path* created_path, std::string* error);

/// Turns a project into a family: the family keeps folder and slug, the project's content moves
/// into a new member of the slug `member_slug`. On failure false, with words in `error` and the
/// old state restored.
bool promote_to_family(const std::filesystem::path& site_config_path,
                       const std::filesystem::path& project_config_path,
                       const std::string& member_slug, const std::string& family_label,
                       std::filesystem::path* family_path, std::filesystem::path* member_path,
                       std::string* error);

} // namespace Lumenfold
