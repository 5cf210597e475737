#pragma once

#include <filesystem>
#include <string>

namespace Lumenfold {

/// Turns a project into a family: the family keeps folder and slug, the project's content moves
/// into a new member of the slug `member_slug`. On failure false, with words in `error` and the
/// old state restored.
bool promote_to_family(const std::filesystem::path& site_config_path,
                       const std::filesystem::path& project_config_path,
                       const std::string& member_slug, const std::string& family_label,
                       std::filesystem::path* family_path, std::filesystem::path* member_path,
                       std::string* error);

} // namespace Lumenfold
