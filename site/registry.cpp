#include "site/registry.h"

#include "site/json_file.h"
#include "site/path_text.h"
#include "site/record_lists.h"
#include "site/references.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <set>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

Result unreadable(const fs::path& site_config_path) {
    return Result::failed("Cannot read site config: " + path_to_utf8(site_config_path));
}

} // namespace

std::vector<ProjectRow> collect_projects(const Json& site_json, const fs::path& site_folder) {
    std::vector<ProjectRow> rows;
    const auto projects = site_json.find("projects");
    if (projects == site_json.end() || !projects->is_array())
        return rows;
    rows.reserve(projects->size());
    for (const Json& entry : *projects) {
        const fs::path config = resolve_reference(text_at(entry, "config"), site_folder);
        ProjectInfo info = read_project_info(config);
        rows.push_back({rows.size(), config, std::move(info.slug), std::move(info.parent_slug),
                        info.slug_is_text});
    }
    return rows;
}

Result read_registry(const fs::path& site_config_path, Json& site) {
    std::optional<Json> json = read_json_file(site_config_path);
    if (!json || !json->is_object())
        return unreadable(site_config_path);
    if (json->contains("projects") && !json->at("projects").is_array())
        return Result::failed("'projects' is not an array in the site config.");
    site = std::move(*json);
    return {};
}

Result registered_projects(const Json& site, const fs::path& site_config_path,
                           std::vector<ProjectRow>& rows) {
    rows = collect_projects(site, site_config_path.parent_path());
    const bool sound = std::all_of(rows.begin(), rows.end(),
                                   [](const ProjectRow& row) { return row.slug_is_text; });
    return sound ? Result() : unreadable(site_config_path);
}

Result add_project_entry(const fs::path& path, const std::string& reference) {
    const fs::path folder = path.parent_path();
    const fs::path wanted = resolve_reference(reference, folder);
    bool is_there = false;
    const Result written = edit_config_file(path, [&](Json& site) {
        Json& projects = list_at(site, "projects");
        is_there = std::any_of(projects.begin(), projects.end(), [&](const Json& entry) {
            const std::string config = text_at(entry, "config");
            return !config.empty() && resolve_reference(config, folder) == wanted;
        });
        if (is_there)
            return Result::idle();
        Json entry = Json::object();
        entry["config"] = reference;
        projects.push_back(std::move(entry));
        return Result();
    });
    return is_there ? Result() : written;
}

Result remove_projects(const fs::path& path, const std::vector<fs::path>& references) {
    std::set<fs::path> removed;
    for (const fs::path& reference : references)
        removed.insert(comparable_path(reference));
    return edit_config_file(path, [&](Json& site) {
        Json* projects = find_list(site, "projects");
        const auto is_removed = [&](const Json& entry) {
            const std::string config = text_at(entry, "config");
            return !config.empty() &&
                   removed.contains(resolve_reference(config, path.parent_path()));
        };
        const bool any = projects && erase_elements(*projects, is_removed) > 0;
        return any ? Result() : Result::changed();
    });
}

} // namespace Lumenfold
