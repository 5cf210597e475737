#pragma once

#include "app/shell.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Wires the fields of the project, its repository and its source root, and the logo.
void wire_project_form(const Context& context);

/// Fills slug, name, tagline, logo, repository and source path from the configuration.
void fill_project_form(const Context& context, const Json& project);

} // namespace Lumenfold
