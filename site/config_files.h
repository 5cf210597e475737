#pragma once

#include "site/home_sections.h"
#include "site/json_file.h"
#include "site/project_info.h"
#include "site/references.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace Lumenfold {

/// The highest "format" that this program reads, and the one it writes.
inline constexpr int CONFIG_FORMAT_VERSION = 1;

inline constexpr const char* SITE_FILE_NAME = ".lumenfold-site";
inline constexpr const char* PROJECT_FILE_NAME = ".lumenfold-project";
inline constexpr const char* MANIFEST_FILE_NAME = ".lumenfold";
inline constexpr const char* BUILT_FILE_NAME = ".lumenfold-built";

enum class ConfigKind : std::int32_t { Site, Project, Manifest, Unknown };

/// What kind of configuration a file is, by its name or else by its keys.
ConfigKind classify_config(const std::filesystem::path& path);

/// Whether a document's "format" is one that this program reads; if not, `error` says why. A
/// value that is no object, or has no "format", passes.
bool check_format(const Json& json, std::string* error);
/// The same for a file; one that cannot be opened or parsed passes.
bool check_format(const std::filesystem::path& path, std::string* error);

/// The same for the document that was read from `path`, which the sentence names.
Result check_format_of(const std::filesystem::path& path, const Json& json);

/// Puts "format" first in an object that has none.
void ensure_format(Json& json);

/// The title of a site or the name of a project; the folder's name when there is none.
std::string read_title(const std::filesystem::path& path, ConfigKind kind);

} // namespace Lumenfold
