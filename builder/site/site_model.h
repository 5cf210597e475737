#pragma once

#include "builder/report/message.h"
#include "builder/site/project_config.h"
#include "builder/site/site_config.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

inline constexpr std::size_t NO_PROJECT = static_cast<std::size_t>(-1);

/// A registered project and its place on the site.
struct SiteProject {
    ProjectConfig config;
    std::string address; ///< from the site's root, with a slash at its end: "gauge/core/"
    std::size_t family = NO_PROJECT;  ///< the project that it is a member of
    std::vector<std::size_t> members; ///< in the order of the registry

    bool is_family() const { return !members.empty(); }
};

/// The site as it is configured. Projects that cannot have a place are left out and told.
struct SiteModel {
    SiteConfig config;
    std::vector<SiteProject> projects; ///< in the order of the registry
    bool complete = true;              ///< false if a fault left a project out
};

/// The configuration that an entry of the registry refers to.
std::filesystem::path project_file(const std::string& reference,
                                   const std::filesystem::path& site_folder);

/// Reads a site and the projects that it registers. Nothing, with a fault told, if the site's own
/// file cannot be used.
std::optional<SiteModel> load_site(const std::filesystem::path& site_file, unsigned threads,
                                   Messages& messages);

} // namespace Lumenfold::Builder
