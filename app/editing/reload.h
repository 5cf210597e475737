#pragma once

#include "app/context/context.h"

namespace Lumenfold {

/// Gives up the unsaved text of the text view and of every file editor of the active configuration.
void discard_unsaved(const Context& context);

/// Refills the panels from disk and discards what is unsaved in the text view and file editors.
/// Nothing while nothing is open.
void reload(const Context& context);

/// Refills the panels after a file changed. Unsaved text of the text view and of file editors
/// stays, and edits that could not be written stay pending.
void reload_after_change(const Context& context);

} // namespace Lumenfold
