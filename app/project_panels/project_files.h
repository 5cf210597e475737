#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

#include <filesystem>
#include <string>

namespace Lumenfold {

/// The folder of the configuration of the member shown.
std::filesystem::path member_folder(const AppContext& context);

/// The file that a name in the manifest means: below the source root, which is below the member's
/// folder unless it is absolute. Empty for an empty name.
std::string resolve_source(const AppContext& context, const std::string& value);

/// The manifest in the source root of the member shown.
std::filesystem::path project_manifest(const AppContext& context);

/// Reads that manifest into the project's state. One that is there and cannot be read, or is of a
/// later format, counts as empty, and the state tells why. Edits that wait for it are taken up.
void read_manifest_state(const Context& context);

/// The configuration file of the site above the member shown; empty if there is none.
std::filesystem::path site_config_above(const AppContext& context);

} // namespace Lumenfold
