#pragma once

#include "app/context/configurator.h"
#include "app/context/confirm_dialog.h"

namespace Lumenfold {

/// The first of the active configuration's guards with unsaved text, null if there is none.
const Guard* first_dirty_guard(AppContext& context, const Shell& configurator);

/// Runs `continuation` at once when the active configuration holds no unsaved text; otherwise
/// after the user agreed to discard it.
void leave_guard(const Context& context, const Continuation& continuation);

} // namespace Lumenfold
