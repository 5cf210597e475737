#pragma once

#include "site/json_file.h"

#include <filesystem>

namespace Lumenfold::Builder {

/// The folder that a project's documents come from: "build.source_path" of its configuration, else
/// the configuration's own folder if a manifest lies in it. Empty for a family, or a project of
/// which nothing is written yet. The folder need not exist.
std::filesystem::path source_folder_of(const Json& project,
                                       const std::filesystem::path& project_file);

} // namespace Lumenfold::Builder
