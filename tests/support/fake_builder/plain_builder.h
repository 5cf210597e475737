#pragma once

#include "site/json_file.h"

#include <filesystem>
#include <string>

namespace FakeBuilder {

/// Pretends to build the site: makes its output folder and reports it.
int build_site(const std::filesystem::path& config_path, const Lumenfold::Json& site);

/// Pretends to build the declared versions that have no folder yet, each with its record.
int build_project(const std::filesystem::path& config_path, const Lumenfold::Json& project);

/// Lists the declared and the excluded versions.
int list_versions(const std::filesystem::path& config_path, const Lumenfold::Json& project);

} // namespace FakeBuilder
