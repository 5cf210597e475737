#pragma once

#include "builder/report/reporter.h"
#include "site/config_files.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Lumenfold::Builder {

/// The configuration of `kind` that a command's argument means: the file, or the one in the folder.
/// Nothing, told as a fault, if there is none or it is of the other kind.
std::optional<std::filesystem::path> config_argument(const std::string& argument, ConfigKind kind,
                                                     Reporter& reporter);

} // namespace Lumenfold::Builder
