#pragma once

#include "app/shell.h"

namespace Lumenfold {

/// Wires the build panel of the site configurator.
void wire_site_build_panel(const Context& context);

} // namespace Lumenfold
