#pragma once

#include "app/context/configurator.h"
#include "site/json_file.h"

#include <string>

namespace Lumenfold {

enum class TextStatus { Clean, Unsaved, Invalid };

/// Sets the status line of the active configurator's text view.
void set_status(const Context& context, TextStatus status, const std::string& message);

/// Starts the edits of a file, or goes on with them after a change of it. The text view shows what
/// it holds, unless unsaved text of that file is in it. The document read, with the edits of it
/// that could not be written yet, which are pending again; an empty object when it does not parse.
Json start_editing(const Context& context, const std::string& path);

/// The configuration's file holds what the panels were filled from. Else they must be filled again
/// after it was written: their rows may stand for other records by now.
bool shows_disk(const AppContext& context);

/// Takes over what this program just wrote to the active configuration's file.
void take_written(const Context& context);

/// Leaves no file to edit: nothing pending, and an empty text view.
void stop_editing(const Context& context);

/// Gives up the unsaved text of the text view.
void discard_typed_text(const Context& context);

/// A configuration is open and the text view differs from its file as last read.
bool text_view_dirty(const AppContext& context, const Shell& configurator);

/// Wires the text editor and the save button of a configurator.
void wire_text_view(const Context& context, Shell& configurator);

} // namespace Lumenfold
