#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Shows the policy selected.
void fill_policies_panel(const Context& context, const Json& site);

/// Wires the panel with its file editor and the dialog that adds a policy.
void wire_policies_panel(const Context& context);

} // namespace Lumenfold
