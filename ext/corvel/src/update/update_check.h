#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace Corvel {

class CorvelApp;

/// The outcome of one check for a newer release.
struct UpdateResult {
    bool success = false; ///< a manifest was fetched and understood
    std::string error;    ///< why not, in words for the user
    bool update_available = false;
    std::string latest_version;
    std::string notes_url;
    std::string download_page;
    std::string download_url; ///< link for this platform, or the download page
};

/// What the store says of update checks.
struct UpdateSettings {
    std::string manifest_url;
    std::string platform_key;
    std::int32_t check_hours = 24;
};

UpdateSettings read_update_settings(const CorvelApp& app);

/// Fetches the manifest through the `http` slot and calls `done` once: later, or at once when the
/// check cannot start. Every answer sets the store key "update.last_check" (seconds since 1970).
void check_for_update(CorvelApp& app, const UpdateSettings& settings,
                      std::function<void(const UpdateResult&)> done);

/// Reads a manifest: {"version": text, "notes_url"?: text, "download_page"?: text,
/// "platforms"?: {key: {"url": text}}}. False with words in `result.error` if it is unusable.
bool parse_update_manifest(std::string_view text, const std::string& platform_key,
                           UpdateResult& result);

/// Semantic versions (semver.org 2.0.0) with a leading "v" and missing parts tolerated: above 0 if
/// `a` is newer, 0 if equal, below 0 if older.
int compare_versions(std::string_view a, std::string_view b);

} // namespace Corvel
