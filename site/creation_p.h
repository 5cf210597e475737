#pragma once

#include "site/creation.h"

#include <optional>

namespace Lumenfold {

/// Reads the site that an operation on its registry works on: an object whose "projects" is an
/// array, if it is there at all. Nothing otherwise, with words in `error`.
std::optional<Json> read_registry(const std::filesystem::path& site_config_path,
                                  std::string* error);

/// The registered projects; nothing, with words in `error`, if one has a "slug" that is no string.
std::optional<std::vector<ProjectRow>>
registered_projects(const Json& site, const std::filesystem::path& site_config_path,
                    std::string* error);

} // namespace Lumenfold
