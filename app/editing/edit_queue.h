#pragma once

#include "app/shell.h"

#include <string>

namespace Lumenfold {

/// Assigns `value` at a JSON pointer of the configuration file, 500 ms after the last edit.
/// Nothing without an open configuration.
void queue_edit(const Context& context, const std::string& pointer, const std::string& value);

/// The same for the manifest of the project shown.
void queue_manifest_edit(const Context& context, const std::string& pointer,
                         const std::string& value);

/// Writes all pending edits now. A file that cannot be read keeps its edits pending; one that
/// cannot be written loses them. Shows nothing either way.
void flush_edits(const Context& context);

} // namespace Lumenfold
