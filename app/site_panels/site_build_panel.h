#pragma once

#include "app/context/context.h"

namespace Lumenfold {

/// Wires the build panel of the site configurator.
void wire_site_build_panel(const Context& context);

} // namespace Lumenfold
