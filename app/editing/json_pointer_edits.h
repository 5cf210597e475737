#pragma once

#include "app/edit_state.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Assigns each text at its pointer, creating what is missing. An edit that does not fit the
/// document, such as a member of a string, is dropped; the others still apply.
void apply_edits(Json& document, const PointerEdits& edits);

} // namespace Lumenfold
