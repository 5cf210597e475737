#include "site/config_files.h"

#include "site/path_text.h"
#include "site/record_lists.h"

#include <nlohmann/json.hpp>

#include <string_view>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

bool is_file(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

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
    const auto format = json.find("format");
    if (!json.is_object() || format == json.end())
        return true;
    const std::string highest = std::to_string(CONFIG_FORMAT_VERSION);
    if (!format->is_number_integer())
        return fail(error, "'format' must be an integer (this Lumenfold reads up to format " +
                               highest + ")");
    if (*format == CONFIG_FORMAT_VERSION)
        return true;
    // Only a later format is one that a newer program would read.
    const char* advice = is_later_format(*format) ? " (update Lumenfold to open it)" : "";
    return fail(error, "declares format " + format->dump() +
                           "; this Lumenfold reads up to format " + highest + advice);
}

bool check_format(const fs::path& path, std::string* error) {
    const std::optional<Json> json = read_json_file(path);
    return !json || check_format(*json, error);
}

void ensure_format(Json& json) {
    if (!json.is_object() || json.contains("format"))
        return;
    Json with_format = Json::object();
    with_format["format"] = CONFIG_FORMAT_VERSION;
    for (auto& [key, value] : json.items())
        with_format[key] = std::move(value);
    json = std::move(with_format);
}

std::string read_title(const fs::path& path, ConfigKind kind) {
    std::string title;
    if (kind == ConfigKind::Site || kind == ConfigKind::Project)
        if (const std::optional<Json> json = read_json_file(path))
            title = text_at(*json, kind == ConfigKind::Site ? "title" : "name");
    return title.empty() ? folder_name(path) : title;
}

ProjectInfo read_project_info(const std::string& reference, const fs::path& site_root) {
    const std::optional<Json> json = read_json_file(site_root / path_from_utf8(reference));
    if (!json)
        return {};
    return {text_at(*json, "slug"),         text_at(*json, "name"),
            text_at(*json, "tagline"),      text_at(*json, "parent_slug"),
            text_at(*json, "family_label"), text_at(*json, "logo")};
}

std::vector<std::string> read_home_sections(const fs::path& path) {
    std::vector<std::string> types;
    const std::optional<Json> json = read_json_file(path);
    if (!json || !json->is_object())
        return types;
    const auto home = json->find("home");
    if (home == json->end() || !home->is_object())
        return types;
    const auto sections = home->find("sections");
    if (sections == home->end() || !sections->is_array())
        return types;
    for (const Json& section : *sections)
        types.push_back(text_at(section, "type"));
    return types;
}

fs::path resolve_reference(const std::string& reference, const fs::path& site_folder) {
    return comparable_path(site_folder / path_from_utf8(reference));
}

fs::path resolve_image(const fs::path& root, const std::string& reference) {
    const std::size_t start = reference.find_first_not_of('/');
    if (start == std::string::npos)
        return {};
    fs::path image = root / path_from_utf8(std::string_view(reference).substr(start));
    return is_file(image) ? image : fs::path();
}

fs::path find_site_above(const fs::path& folder) {
    std::error_code error;
    fs::path candidate = fs::absolute(folder, error).lexically_normal();
    while (!error) {
        if (is_file(candidate / SITE_FILE_NAME))
            return candidate;
        if (!candidate.has_relative_path())
            break;
        candidate = candidate.parent_path();
    }
    return folder;
}

fs::path resolve_project_logo(const fs::path& project_folder, const std::string& reference) {
    fs::path logo = resolve_image(find_site_above(project_folder), reference);
    return logo.empty() ? resolve_image(project_folder, reference) : logo;
}

} // namespace Lumenfold
