#pragma once

#include "app/context/configurator.h"
#include "site/json_file.h"

#include <string>

namespace Lumenfold {

enum class TextStatus { Clean, Unsaved, Invalid };

/// Sets the status line of the active configurator's text view.
void set_status(const Context& context, TextStatus status, const std::string& message);

/// Makes `text` what the text view shows and what it compares with.
void set_baseline(const Context& context, const std::string& text);

/// Starts the edits of a file: nothing pending, and a clean text view that shows what it holds. The
/// document read, an empty object when it does not parse.
Json start_editing(const Context& context, const std::string& path);

/// Takes over what this program just wrote to the active configuration's file.
void take_written(const Context& context);

/// Leaves no file to edit: nothing pending, and an empty text view.
void stop_editing(const Context& context);

/// Tells the text view whether the file holds another text than the one it started from.
void compare_text_with_disk(const Context& context);

/// A configuration is open and the text view differs from its file as last read.
bool text_view_dirty(const AppContext& context, const Shell& configurator);

/// Wires the text editor and the save button of a configurator.
void wire_text_view(const Context& context, Shell& configurator);

} // namespace Lumenfold
