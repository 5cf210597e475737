#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Slug, name, tagline and logo.
void wire_project_form(const Context& context);
void fill_project_form(const Context& context, const Json& project);

} // namespace Lumenfold
