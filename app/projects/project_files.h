#pragma once

#include "app/shell.h"
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

/// The "build" object of that manifest; empty if it cannot be read or is of a later format.
Json manifest_build(const AppContext& context);

/// The configuration file of the site above the member shown; empty if there is none.
std::filesystem::path site_config_above(const AppContext& context);

/// A member as the family bar and the tabs show it, read from its file.
Member read_member(const std::filesystem::path& config_path, bool umbrella);

/// Shows a file in an Image node, or hides the node for an empty path.
void show_image(AppContext& context, const std::string& path, const std::string& file);

/// Shows a file whose content may have changed under its old name: the node is empty for a moment,
/// since an unchanged source is not read again.
void show_replaced_image(const Context& context, const std::string& path, const std::string& file);

} // namespace Lumenfold
