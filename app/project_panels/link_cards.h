#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

/// The cards of the dependencies and of the downloads, each with the dialog that adds one.
void wire_dependencies(const Context& context);
void wire_downloads(const Context& context);
void fill_dependencies(const Context& context, const Json& project);
void fill_downloads(const Context& context, const Json& project);

} // namespace Lumenfold
