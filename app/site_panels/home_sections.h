#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Publishes the sections of the site's home page.
void fill_home_sections(const Context& context, const Json& site);

/// Wires the actions of the section cards.
void wire_home_sections(const Context& context);

} // namespace Lumenfold
