#include "site/config_files.h"
#include "site/creation_p.h"
#include "site/path_text.h"
#include "site/record_lists.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {

namespace fs = std::filesystem;

bool is_valid_slug(std::string_view text) {
    char previous = '-'; // so that a leading dash counts as a second one
    for (const char c : text) {
        const bool letter_or_digit = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        if (!letter_or_digit && (c != '-' || previous == '-'))
            return false;
        previous = c;
    }
    return previous != '-';
}

std::vector<ProjectRow> collect_projects(const Json& site_json, const fs::path& site_folder) {
    std::vector<ProjectRow> rows;
    const auto projects = site_json.find("projects");
    if (projects == site_json.end() || !projects->is_array())
        return rows;
    rows.reserve(projects->size());
    for (const Json& entry : *projects) {
        ProjectRow row;
        row.index = rows.size();
        row.config = resolve_reference(text_at(entry, "config"), site_folder);
        if (const std::optional<Json> project = read_json_file(row.config)) {
            const auto slug = project->find("slug");
            if (slug != project->end())
                row.slug = slug->get<std::string>();
            row.parent_slug = text_at(*project, "parent_slug");
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::optional<Json> read_registry(const fs::path& site_config_path, std::string* error) {
    std::optional<Json> site = read_json_file(site_config_path);
    if (!site || !site->is_object()) {
        fail(error, "Cannot read site config: " + path_to_utf8(site_config_path));
        return std::nullopt;
    }
    if (site->contains("projects") && !site->at("projects").is_array()) {
        fail(error, "'projects' is not an array in the site config.");
        return std::nullopt;
    }
    return site;
}

std::optional<std::vector<ProjectRow>>
registered_projects(const Json& site, const fs::path& site_config_path, std::string* error) {
    try {
        return collect_projects(site, site_config_path.parent_path());
    } catch (const Json::exception&) {
        fail(error, "Cannot read site config: " + path_to_utf8(site_config_path));
        return std::nullopt;
    }
}

} // namespace Lumenfold
