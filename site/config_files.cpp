#include "site/config_files.h"

#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

std::string folder_name(const fs::path& path) {
    std::error_code error;
    const fs::path folder = fs::absolute(path, error).lexically_normal().parent_path();
    return path_to_utf8(folder.has_filename() ? folder.filename() : folder);
}

/// Compares the value itself: the library would read an unsigned one above 2^63 as negative.
bool is_later_format(const Json& format) {
    return format.is_number_unsigned() ? format.get<std::uint64_t>() > CONFIG_FORMAT_VERSION
                                       : format.get<std::int64_t>() > CONFIG_FORMAT_VERSION;
}

Result check_format_key(const Json& json) {
    const auto format = json.find("format");
    if (!json.is_object() || format == json.end())
        return {};
    const std::string highest = std::to_string(CONFIG_FORMAT_VERSION);
    if (!format->is_number_integer())
        return Result::failed("'format' must be an integer (this Lumenfold reads up to format " +
                              highest + ")");
    if (*format == CONFIG_FORMAT_VERSION)
        return {};
    // Only a later format is one that a newer program would read.
    const char* advice = is_later_format(*format) ? " (update Lumenfold to open it)" : "";
    return Result::failed("declares format " + format->dump() +
                          "; this Lumenfold reads up to format " + highest + advice);
}

} // namespace

ConfigKind classify_config(const fs::path& path) {
    const fs::path name = path.filename();
    if (name == SITE_FILE_NAME)
        return ConfigKind::Site;
    if (name == PROJECT_FILE_NAME)
        return ConfigKind::Project;
    const std::optional<Json> json = read_json_file(path);
    if (!json || !json->is_object())
        return ConfigKind::Unknown;
    const auto projects = json->find("projects");
    if (json->contains("branding") || json->contains("nav_menus") ||
        (projects != json->end() && projects->is_array()))
        return ConfigKind::Site;
    if (json->contains("slug"))
        return ConfigKind::Project;
    if (json->contains("project") || json->contains("includes") || json->contains("external"))
        return ConfigKind::Manifest;
    return ConfigKind::Unknown;
}

bool check_format(const Json& json, std::string* error) {
    return check_format_key(json).report_to(error);
}

bool check_format(const fs::path& path, std::string* error) {
    const std::optional<Json> json = read_json_file(path);
    return !json || check_format(*json, error);
}

Result check_format_of(const fs::path& path, const Json& json) {
    const Result checked = check_format_key(json);
    return checked ? checked : Result::failed(path_to_utf8(path) + ": " + checked.error());
}

void ensure_format(Json& json) {
    if (!json.is_object() || json.contains("format"))
        return;
    Json with_format = Json::object();
    with_format.get_ref<Json::object_t&>().reserve(json.size() + 1);
    append_member(with_format, "format", CONFIG_FORMAT_VERSION);
    for (auto& [key, value] : json.items())
        append_member(with_format, key, std::move(value));
    json = std::move(with_format);
}

std::string read_title(const fs::path& path, ConfigKind kind) {
    std::string title;
    if (kind == ConfigKind::Site || kind == ConfigKind::Project)
        if (const std::optional<Json> json = read_json_file(path))
            title = text_at(*json, kind == ConfigKind::Site ? "title" : "name");
    return title.empty() ? folder_name(path) : title;
}

} // namespace Lumenfold
