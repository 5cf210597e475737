#pragma once

#include "app/context/context.h"

namespace Lumenfold {

/// Wires the Home screen: opening a configuration and making a new website.
void wire_home_screen(const Context& context);

} // namespace Lumenfold
