#pragma once

#include "site/json_text.h"
#include "site/result.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold {

/// What the builder wrote beside a version's output.
struct BuiltRecord {
    std::string tag;
    std::string commit;
    std::string built;
};

/// One folder below "versions".
struct VersionEntry {
    std::string name;
    std::string tag; ///< empty if the build record is missing or refused
};

/// Reads the build record in a version's `folder`. False, with words in `error`, if there is none,
/// it does not parse, its format is refused or it names no tag.
bool read_built_record(const std::filesystem::path& folder, BuiltRecord& record,
                       std::string* error);

/// The version folders of a project, ascending by the bytes of their names. Never fails.
std::vector<VersionEntry> discover_versions(const std::filesystem::path& project_folder);

/// The name of the newest of `entries` by `version_newer`, else the last; empty if there is none.
std::string newest_version(const std::vector<VersionEntry>& entries);

/// The source-root manifest of a project, given its folder and its "build.source_path".
std::filesystem::path manifest_path(const std::filesystem::path& project_config_folder,
                                    const std::string& source_path);

/// Reads a source-root manifest into `json`, whatever its root is. False, with words in `error` and
/// `json` as it was, if there is none, it does not parse or its format is refused.
bool load_manifest(const std::filesystem::path& path, Json& json, std::string* error);

/// Whether label `a` is newer than `b`. Only labels of the form "major.minor" are ordered, and
/// any of these is newer than any other label.
bool version_newer(std::string_view a, std::string_view b);

/// The builder's status word as a label.
std::string version_status_text(std::string_view status);

/// Declares a version, newest first, and takes it off the excluded ones.
Result include_version(const std::filesystem::path& path, const std::string& label,
                       const std::string& release_date);
/// Takes a version's declaration away and lists it as excluded.
Result exclude_version(const std::filesystem::path& path, const std::string& label);

} // namespace Lumenfold
