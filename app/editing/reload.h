#pragma once

#include "app/shell.h"

namespace Lumenfold {

/// Refills the panels from disk and discards what is unsaved in the text view and file editors.
/// Nothing while nothing is open.
void reload(const Context& context);

/// Refills the panels after the application itself changed the file. Unsaved text of a file editor
/// that shows the same file afterwards is put back.
void reload_after_change(const Context& context);

} // namespace Lumenfold
