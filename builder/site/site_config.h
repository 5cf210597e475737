#pragma once

#include "builder/site/config_file.h"

#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// A link as the owner wrote it.
struct ConfigLink {
    std::string label; ///< empty: the title of the page it leads to
    std::string href;
};

struct ConfigMenu {
    ConfigLink link;
    std::vector<ConfigLink> items;
};

struct ConfigSocial {
    std::string label;
    std::string username;
    std::string url;
    std::string icon;
    bool external = false;
};

struct ConfigPolicy {
    std::string slug;
    std::string name;
    std::string title;
    std::string file;
};

struct ConfigSection {
    std::string type;
    std::string id;
    std::string label;
    std::string subtext;
    std::string icon;
    std::string body;
};

/// What the builder reads of a `.lumenfold-site`; texts that are missing are empty.
struct SiteConfig {
    ConfigFile file;
    std::filesystem::path folder;

    std::string title;
    std::string url; ///< without slashes at its end
    std::string description;
    std::string copyright;
    std::string output;
    std::string language;

    std::string tab_text;
    std::string logo;
    std::string logo_height;
    std::string logo_height_mobile;
    std::string accent;

    std::string default_theme;
    bool allow_switching = false;

    std::vector<ConfigMenu> menus;
    std::vector<ConfigLink> footer_links;
    std::vector<std::string> projects; ///< references to their configurations
    std::vector<ConfigSocial> socials;
    std::vector<ConfigPolicy> policies;

    std::string home_title;
    std::string hero;
    std::vector<ConfigSection> sections;

    bool search = true;
    double title_weight = 4;
    double heading_weight = 2;
    double body_weight = 1;
};

SiteConfig read_site_config(ConfigFile file);

} // namespace Lumenfold::Builder
