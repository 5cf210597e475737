#pragma once

#include "app/context/context.h"

#include <string>

namespace Lumenfold {

/// Assigns `value` at a JSON pointer of the configuration file, 500 ms after the last edit.
/// Nothing without an open configuration.
void queue_edit(const Context& context, const std::string& pointer, const std::string& value);

/// The same for the manifest of the project shown.
void queue_manifest_edit(const Context& context, const std::string& pointer,
                         const std::string& value);

/// The path of the manifest of the project shown.
std::string shown_manifest(const AppContext& context);

/// Writes all pending edits after the usual delay.
void flush_later(const Context& context);

/// Writes all pending edits now. A file that cannot be read or written keeps its edits pending; the
/// latter is told, the former when the file is left. An edit of a list element that is another
/// record by now is dropped, told, and the panels are filled again.
void flush_edits(const Context& context);

} // namespace Lumenfold
