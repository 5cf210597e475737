#include "builder/site/project_config.h"

#include "builder/repository/declared_versions.h"
#include "site/versions.h"

#include <algorithm>
#include <set>

namespace Lumenfold::Builder {

namespace {

std::vector<ConfigVersion> read_versions(const Json& json) {
    std::set<std::string> left_out = excluded_labels(json);
    std::vector<ConfigVersion> versions;
    for (const Json* version : objects_at(json, "versions")) {
        std::string label = text_at(*version, "label");
        if (!label.empty() && left_out.insert(label).second)
            versions.push_back({std::move(label), text_at(*version, "release_date"),
                                text_at(*version, "license_display")});
    }
    std::stable_sort(versions.begin(), versions.end(),
                     [](const auto& a, const auto& b) { return version_newer(a.label, b.label); });
    return versions;
}

} // namespace

ProjectConfig read_project_config(ConfigFile file) {
    ProjectConfig config;
    const Json& json = file.json;
    config.folder = file.path.parent_path();
    config.slug = text_at(json, "slug");
    config.parent_slug = text_at(json, "parent_slug");
    config.name = text_at(json, "name");
    if (config.name.empty())
        config.name = config.slug;
    config.tagline = text_at(json, "tagline");
    config.logo = text_at(json, "logo");
    config.family_label = text_at(json, "family_label");
    const Json& repo = object_at(json, "repo");
    config.repo_platform = text_at(repo, "platform");
    config.repo_path = text_at(repo, "path");
    config.repo_url = text_at(repo, "url");
    for (const Json* item : objects_at(json, "requires"))
        config.requirements.push_back({text_at(*item, "name"), text_at(*item, "url"),
                                       text_at(*item, "icon"), flag_at(*item, "external")});
    for (const Json* item : objects_at(json, "downloads"))
        config.downloads.push_back({text_at(*item, "url"), text_at(*item, "platform_icon"),
                                    text_at(*item, "platform_label"), text_at(*item, "size")});
    for (const Json* item : objects_at(json, "facts"))
        config.facts.push_back({text_at(*item, "label"), text_at(*item, "value"),
                                text_at(*item, "href"), text_at(*item, "note"),
                                text_at(*item, "preset")});
    config.versions = read_versions(json);
    config.file = std::move(file);
    return config;
}

} // namespace Lumenfold::Builder
