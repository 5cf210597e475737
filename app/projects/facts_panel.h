#pragma once

#include "app/shell.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Wires the removal of facts and the dialog that adds one.
void wire_facts(const Context& context);

/// Publishes the facts of the configuration, a derived one locked.
void fill_facts(const Context& context, const Json& project);

} // namespace Lumenfold
