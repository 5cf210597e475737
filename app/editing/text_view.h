#pragma once

#include "app/shell.h"

#include <string>

namespace Lumenfold {

enum class TextStatus { Clean, Unsaved, Invalid };

/// Sets the status line of the active configurator's text view.
void set_status(const Context& context, TextStatus status, const std::string& message);

/// Makes `text` what the text view shows and what it compares with.
void set_baseline(const Context& context, const std::string& text);

/// Starts the edits of a file just read: nothing pending, and a clean text view that shows `text`.
void start_editing(const Context& context, const std::string& path, const std::string& text);

/// A configuration is open and the text view differs from its file as last read.
bool text_view_dirty(const AppContext& context, const Shell& shell);

/// Wires the text editor and the save button of a configurator.
void wire_text_view(const Context& context, Shell& shell);

} // namespace Lumenfold
