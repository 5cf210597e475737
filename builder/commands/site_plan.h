#pragma once

#include "builder/report/reporter.h"

#include <filesystem>
#include <iosfwd>
#include <string>

namespace Lumenfold::Builder {

/// Prints the versions of all projects that wait to be built, as a JSON array of objects
///
///     {"project": "Gauge", "version": "3.2", "command": ["lumenfold-cli", "build", …]}
///
/// one a line. Each command is independent of the others and may run in any order, beside them, or
/// on another machine with the same files: `program` is what it calls, and paths are relative to
/// the working folder if `site_file` is. False if there was a fault.
bool print_plan(const std::filesystem::path& site_file, const std::string& program,
                std::ostream& out, Reporter& reporter);

} // namespace Lumenfold::Builder
