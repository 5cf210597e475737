#pragma once

#include "app/context/context.h"

namespace Lumenfold {

/// Opens the configurations named in the environment variable LUMENFOLD_DEV_OPEN, one a line, and
/// tells which of the program's arguments could not be opened.
void open_named_files(const Context& context);

} // namespace Lumenfold
