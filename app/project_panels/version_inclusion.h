#pragma once

#include "app/context/context.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace Lumenfold {

/// Includes an excluded version, or excludes an included one and deletes its generated output,
/// after asking when there is any. `checkbox` keeps showing what is, until the table is refreshed.
void toggle_version(const Context& context, const std::string& checkbox, std::size_t position);

/// The folder of a version's generated output beside the configuration. Nothing when it does not
/// exist, and for a name that could mean any other place than a direct child of "versions".
std::optional<std::filesystem::path> version_output(const std::filesystem::path& config_path,
                                                    const std::string& tag_mm);

} // namespace Lumenfold
