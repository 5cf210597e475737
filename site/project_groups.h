#pragma once

#include "site/json_text.h"
#include "site/project_info.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Lumenfold {

/// A registered project and what its file says.
struct RegisteredProject {
    std::filesystem::path file;
    ProjectInfo info;
};

/// A family, or a project alone.
struct ProjectGroup {
    std::vector<RegisteredProject> entries; ///< in the order of the registry

    /// The family's own entry; null if the registry lacks it.
    const RegisteredProject* lead() const;
};

/// The files that a site's registry means, resolved, in its order and each once.
std::vector<std::filesystem::path> registered_files(const Json& site,
                                                    const std::filesystem::path& site_folder);

/// Registered projects by family, in order of first appearance. One that is there and cannot be
/// read stands alone, with its problem, as does one without a slug; one that is not there, or says
/// nothing, is left out.
std::vector<ProjectGroup> group_projects(const std::vector<std::filesystem::path>& files);

/// Names of the folders below "projects" that hold a project's configuration, and none of the files
/// `registered`; sorted.
std::vector<std::string> find_orphans(const std::filesystem::path& site_folder,
                                      const std::vector<std::filesystem::path>& registered);

} // namespace Lumenfold
