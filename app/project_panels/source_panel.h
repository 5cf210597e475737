#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

/// The repository and the source root.
void wire_source_panel(const Context& context);
void fill_source_panel(const Context& context, const Json& project);

} // namespace Lumenfold
