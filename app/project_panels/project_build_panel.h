#pragma once

#include "app/context/context.h"

namespace Lumenfold {

/// Wires the build panel of the project configurator.
void wire_project_build_panel(const Context& context);

} // namespace Lumenfold
