#pragma once

#include "app/context/context.h"

namespace Lumenfold {

/// Gives up the unsaved text of every file editor of the active configuration.
void discard_unsaved(const Context& context);

/// Refills the panels from disk and discards what is unsaved in the text view and file editors.
/// Nothing while nothing is open.
void reload(const Context& context);

/// Refills the panels after a file changed. Unsaved text of file editors stays.
void reload_after_change(const Context& context);

} // namespace Lumenfold
