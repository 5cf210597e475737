#pragma once

#include "app/context/context.h"

namespace Lumenfold {

/// Wires the dialog that adds a section to the home page.
void wire_add_section_dialog(const Context& context);

} // namespace Lumenfold
