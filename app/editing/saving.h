#pragma once

#include "app/context/confirm_dialog.h"
#include "site/result.h"

#include <filesystem>
#include <string>

namespace Lumenfold {

/// Writes a text that the user asked to save. False if it could not be written, which is told.
bool save_text(const Context& context, const std::filesystem::path& file, const std::string& text);

/// Tells why form edits could not be written: once for each failure in a row.
void tell_unwritten_edits(const Context& context, const Result& failure);

/// Asks before a file is written that changed since it was read.
void ask_to_overwrite(const Context& context, Continuation overwrite);

} // namespace Lumenfold
