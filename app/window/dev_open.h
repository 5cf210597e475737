#pragma once

#include "app/context/context.h"

namespace Lumenfold {

/// Opens the configurations named in the environment variable LUMENFOLD_DEV_OPEN, one a line.
void open_from_environment(const Context& context);

} // namespace Lumenfold
