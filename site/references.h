#pragma once

#include <filesystem>
#include <string>

namespace Lumenfold {

/// The path that a registry reference means, absolute or relative to `site_folder`; two spellings
/// of one path give equal results.
std::filesystem::path resolve_reference(const std::string& reference,
                                        const std::filesystem::path& site_folder);

/// The file of a site-relative image reference such as "/images/logo.svg"; empty for an empty
/// reference and for a file that does not exist.
std::filesystem::path resolve_image(const std::filesystem::path& root,
                                    const std::string& reference);

/// The first folder from `folder` upward that holds a site configuration; `folder` if none does.
std::filesystem::path find_site_above(const std::filesystem::path& folder);

/// The file of a project's "logo": below the site above `project_folder`, else below the folder
/// itself; empty when neither exists.
std::filesystem::path resolve_project_logo(const std::filesystem::path& project_folder,
                                           const std::string& reference);

} // namespace Lumenfold
