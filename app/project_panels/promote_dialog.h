#pragma once

#include "app/context/context.h"

namespace Lumenfold {

/// Wires the dialog that turns a project into a family.
void wire_promote_dialog(const Context& context);

/// Shows the way to it for a plain project below a site.
void offer_promotion(const Context& context);

} // namespace Lumenfold
