#pragma once

#include "site/json_file.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace Lumenfold {

/// The highest "format" that this program reads, and the one it writes.
inline constexpr int CONFIG_FORMAT_VERSION = 1;

inline constexpr const char* SITE_FILE_NAME = ".lumenfold-site";
inline constexpr const char* PROJECT_FILE_NAME = ".lumenfold-project";
inline constexpr const char* MANIFEST_FILE_NAME = ".lumenfold";
inline constexpr const char* BUILT_FILE_NAME = ".lumenfold-built";

enum class ConfigKind : std::int32_t { Site, Project, Manifest, Unknown };

/// What a project's configuration says of it; all empty for a file that cannot be read.
struct ProjectInfo {
    std::string slug;
    std::string name;
    std::string tagline;
    std::string parent_slug;
    std::string family_label;
    std::string logo;
};

/// What kind of configuration a file is, by its name or else by its keys.
ConfigKind classify_config(const std::filesystem::path& path);

/// Whether a document's "format" is one that this program reads; if not, `error` says why. A
/// value that is no object, or has no "format", passes.
bool check_format(const Json& json, std::string* error);
/// The same for a file; one that cannot be opened or parsed passes.
bool check_format(const std::filesystem::path& path, std::string* error);

/// Puts "format" first in an object that has none.
void ensure_format(Json& json);

/// The title of a site or the name of a project; the folder's name when there is none.
std::string read_title(const std::filesystem::path& path, ConfigKind kind);

/// Reads the project that `reference` means, relative to `site_root`.
ProjectInfo read_project_info(const std::string& reference, const std::filesystem::path& site_root);

/// The "type" of each home section in order, empty where it has none.
std::vector<std::string> read_home_sections(const std::filesystem::path& path);

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
