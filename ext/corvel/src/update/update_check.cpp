#include "update/update_check.h"

#include "json/json_depth.h"
#include "runtime/corvel_app.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdlib>
#include <utility>

namespace Corvel {
namespace {

using Json = nlohmann::json;

constexpr const char* MANIFEST_URL = "update.manifest_url";
constexpr const char* PLATFORM_KEY = "update.platform_key";
constexpr const char* CHECK_HOURS = "update.check_hours";
constexpr std::int64_t MAX_MANIFEST = 1 << 20;
constexpr const char* LAST_CHECK = "update.last_check";

/// The string under `key`, empty if it is missing or of another type.
std::string text_of(const Json& object, const std::string& key) {
    const auto member = object.find(key);
    return member != object.end() && member->is_string() ? member->get<std::string>()
                                                         : std::string();
}

std::string seconds_since_epoch() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::to_string(std::chrono::duration_cast<std::chrono::seconds>(now).count());
}

UpdateResult read_response(const CorvelApp& app, const UpdateSettings& settings,
                           const HttpResponse& response) {
    UpdateResult result;
    if (!response.broken_off.empty()) {
        result.error = response.broken_off;
    } else if (response.status == 200 && response.body.size() > MAX_MANIFEST) {
        result.error = "manifest is longer than 1 MiB";
    } else if (response.status == 200) {
        result.success = parse_update_manifest(response.body, settings.platform_key, result);
        result.update_available =
            result.success && compare_versions(result.latest_version, app.app_version) > 0;
    } else if (response.status != 0) {
        result.error = "manifest fetch returned HTTP " + std::to_string(response.status);
    } else {
        result.error = response.error.empty() ? "network failure" : response.error;
    }
    return result;
}

} // namespace

UpdateSettings read_update_settings(const CorvelApp& app) {
    UpdateSettings settings;
    settings.manifest_url = app.store_get(MANIFEST_URL);
    settings.platform_key = app.store_get(PLATFORM_KEY);
    if (const std::string hours = app.store_get(CHECK_HOURS); !hours.empty())
        settings.check_hours = std::atoi(hours.c_str());
    return settings;
}

void check_for_update(CorvelApp& app, const UpdateSettings& settings,
                      std::function<void(const UpdateResult&)> done) {
    UpdateResult refusal;
    if (settings.manifest_url.empty())
        refusal.error = "no update manifest url configured";
    else if (app.app_version.empty())
        refusal.error = "no app version set";
    if (!refusal.error.empty()) {
        done(refusal);
        return;
    }
    const auto on_response = [&app, settings,
                              done = std::move(done)](const HttpResponse& response) {
        app.store_set(LAST_CHECK, seconds_since_epoch());
        done(read_response(app, settings, response));
    };
    if (!app.http) {
        on_response({0, "", "no http handler installed"});
        return;
    }
    HttpRequest request;
    request.method = "GET";
    request.url = settings.manifest_url;
    request.max_answer = MAX_MANIFEST;
    app.http(request, on_response);
}

bool parse_update_manifest(std::string_view text, const std::string& platform_key,
                           UpdateResult& result) {
    const bool is_sound = find_json_level_beyond(text, MAX_JSON_DEPTH) == 0;
    const Json manifest = is_sound ? Json::parse(text, nullptr, false) : Json();
    if (!manifest.is_object()) {
        result.error = "manifest is not a JSON object";
        return false;
    }
    result.latest_version = text_of(manifest, "version");
    if (result.latest_version.empty()) {
        result.error = "manifest has no \"version\"";
        return false;
    }
    result.notes_url = text_of(manifest, "notes_url");
    result.download_page = text_of(manifest, "download_page");
    result.download_url = result.download_page;
    const auto platforms = manifest.find("platforms");
    if (platforms == manifest.end() || !platforms->is_object())
        return true;
    const auto platform = platforms->find(platform_key);
    if (platform == platforms->end() || !platform->is_object())
        return true;
    const auto url = platform->find("url");
    if (url != platform->end() && url->is_string())
        result.download_url = url->get<std::string>();
    return true;
}

} // namespace Corvel
