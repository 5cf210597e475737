#include "builder/site/site_config.h"

#include <algorithm>

namespace Lumenfold::Builder {

namespace {

std::string without_end_slashes(std::string url) {
    while (url.ends_with('/'))
        url.pop_back();
    return url;
}

/// A path alone, or an object with "label" and "href".
ConfigLink read_link(const Json& json) {
    if (json.is_string())
        return {"", json.get<std::string>()};
    return {text_at(json, "label"), text_at(json, "href")};
}

std::vector<ConfigLink> read_links(const Json& json, const char* key) {
    std::vector<ConfigLink> links;
    const auto array = json.find(key);
    if (array == json.end() || !array->is_array())
        return links;
    for (const Json& element : *array)
        if (element.is_string() || element.is_object())
            links.push_back(read_link(element));
    return links;
}

std::vector<ConfigMenu> read_menus(const Json& json) {
    std::vector<ConfigMenu> menus;
    const auto array = json.find("nav_menus");
    if (array == json.end() || !array->is_array())
        return menus;
    for (const Json& element : *array) {
        if (!element.is_string() && !element.is_object())
            continue;
        menus.push_back({read_link(element), {}});
        if (element.is_object())
            menus.back().items = read_links(element, "items");
    }
    return menus;
}

double weight_at(const Json& weights, const char* key, double otherwise) {
    const auto found = weights.find(key);
    if (found == weights.end() || !found->is_number())
        return otherwise;
    return std::clamp(found->get<double>(), 0.0, 1000.0);
}

void read_branding(SiteConfig& config, const Json& branding) {
    config.tab_text = text_at(branding, "tab_text");
    config.logo = text_at(branding, "logo_path");
    config.logo_height = text_at(branding, "logo_height");
    config.logo_height_mobile = text_at(branding, "logo_height_mobile");
    config.accent = text_at(branding, "accent");
}

void read_lists(SiteConfig& config, const Json& json) {
    config.menus = read_menus(json);
    config.footer_links = read_links(json, "footer_links");
    for (const Json* entry : objects_at(json, "projects"))
        if (std::string reference = text_at(*entry, "config"); !reference.empty())
            config.projects.push_back(std::move(reference));
    for (const Json* social : objects_at(json, "socials"))
        config.socials.push_back({text_at(*social, "label"), text_at(*social, "username"),
                                  text_at(*social, "url"), text_at(*social, "icon"),
                                  flag_at(*social, "external")});
    for (const Json* policy : objects_at(json, "policies"))
        config.policies.push_back({text_at(*policy, "slug"), text_at(*policy, "name"),
                                   text_at(*policy, "title"), text_at(*policy, "file")});
    for (const Json* section : objects_at(object_at(json, "home"), "sections"))
        config.sections.push_back({text_at(*section, "type"), text_at(*section, "id"),
                                   text_at(*section, "label"), text_at(*section, "subtext"),
                                   text_at(*section, "icon"), text_at(*section, "body")});
}

} // namespace

SiteConfig read_site_config(ConfigFile file) {
    SiteConfig config;
    const Json& json = file.json;
    config.folder = file.path.parent_path();
    config.title = text_at(json, "title");
    config.url = without_end_slashes(text_at(json, "url"));
    config.description = text_at(json, "description");
    config.copyright = text_at(json, "copyright");
    config.output = text_at(json, "output");
    config.language = text_at(json, "language");
    read_branding(config, object_at(json, "branding"));
    const Json& corvel = object_at(json, "corvel");
    config.default_theme = text_at(corvel, "default_theme");
    config.allow_switching = flag_at(corvel, "allow_switching");
    read_lists(config, json);
    config.home_title = text_at(object_at(json, "pages"), "home_title");
    config.hero = text_at(object_at(json, "home"), "hero");
    const Json& search = object_at(json, "search");
    config.search = flag_at(search, "enabled", true);
    const Json& weights = object_at(search, "weights");
    config.title_weight = weight_at(weights, "title", config.title_weight);
    config.heading_weight = weight_at(weights, "heading", config.heading_weight);
    config.body_weight = weight_at(weights, "body", config.body_weight);
    config.file = std::move(file);
    return config;
}

} // namespace Lumenfold::Builder
