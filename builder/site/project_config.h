#pragma once

#include "builder/site/config_file.h"

#include <string>
#include <vector>

namespace Lumenfold::Builder {

struct ConfigFact {
    std::string label;
    std::string value;
    std::string href;
    std::string note;
    std::string preset; ///< "stable_release": the newest version takes the value's place
};

struct ConfigDownload {
    std::string url;
    std::string platform_icon;
    std::string platform_label;
    std::string size;
};

struct ConfigRequirement {
    std::string name;
    std::string url;
    std::string icon;
    bool external = false;
};

struct ConfigVersion {
    std::string label;
    std::string release_date;
    std::string license;
};

/// What the builder reads of a `.lumenfold-project`; texts that are missing are empty.
struct ProjectConfig {
    ConfigFile file;
    std::filesystem::path folder;
    std::string slug;
    std::string parent_slug;
    std::string name; ///< the slug if there is none
    std::string tagline;
    std::string logo;
    std::string family_label;
    std::string repo_platform;
    std::string repo_path;
    std::string repo_url;
    std::vector<ConfigRequirement> requirements;
    std::vector<ConfigDownload> downloads;
    std::vector<ConfigFact> facts;
    std::vector<ConfigVersion> versions; ///< without excluded ones, newest first
};

ProjectConfig read_project_config(ConfigFile file);

} // namespace Lumenfold::Builder
