#pragma once

#include "app/context/context.h"

namespace Lumenfold {

/// Wires the dialog that adds a project to a site, or a member to a family.
void wire_add_project_dialog(const Context& context);

} // namespace Lumenfold
