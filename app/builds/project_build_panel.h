#pragma once

#include "app/shell.h"

namespace Lumenfold {

/// Wires the build panel of the project configurator.
void wire_project_build_panel(const Context& context);

} // namespace Lumenfold
