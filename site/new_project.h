#pragma once

#include <filesystem>
#include <string>

namespace Lumenfold {

/// What a new project or family member is made of.
struct NewProjectRecord {
    std::string name;
    std::string slug;
    std::string tagline;
    std::string parent_slug; ///< empty for a top-level project
    std::string family_label;
};

/// Makes a project's folder and configuration and registers it, a family member right behind its
/// family. `created_path` is the new configuration. On failure false, with words in `error`.
bool create_project(const std::filesystem::path& site_config_path, const NewProjectRecord& record,
                    std::filesystem::path* created_path, std::string* error);

} // namespace Lumenfold
