#pragma once

#include "app/context/confirm_dialog.h"
#include "site/result.h"

#include <filesystem>
#include <string>

namespace Lumenfold {

/// Writes a text that the user asked to save, with its folder if that is gone. False if it could
/// not be written, which is told.
bool save_text(const Context& context, const std::filesystem::path& file, const std::string& text);

/// Tells why something could not be written.
void tell_failed_save(const Context& context, const std::string& reason);

/// Tells that an edit was dropped, since its record is not in its place any more.
void tell_changed_list(const Context& context);

/// Asks before a file is written that changed since it was read.
void ask_to_overwrite(const Context& context, Continuation overwrite);

} // namespace Lumenfold
