#pragma once

#include "builder/report/reporter.h"

#include <filesystem>
#include <iosfwd>
#include <string>

namespace Lumenfold::Builder {

// The commands on one project. False if there was a fault.

/// Builds pending versions: all, or the one named.
bool build_project(const std::filesystem::path& project_file, const std::string& only_label,
                   Reporter& reporter);

/// Prints the versions on `out`, for programs or people; what else there is to say goes to
/// `reporter`.
bool print_versions(const std::filesystem::path& project_file, bool porcelain, std::ostream& out,
                    Reporter& reporter);

} // namespace Lumenfold::Builder
