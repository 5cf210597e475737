#pragma once

#include "app/context/edit_state.h"

#include <optional>
#include <string>

namespace Lumenfold {

// Kept texts lie in a folder of the application's own, one file for each, which only its user can
// read. An empty folder keeps nothing. Whatever fails is silent: the text is still on screen.

/// Keeps `text` as what `file` (an absolute path) is to hold, in place of what was kept before.
/// `begun_on` is what the file held when the text was begun.
void keep_text(const std::string& folder, const std::string& file, const std::string& text,
               const std::string& begun_on);

std::optional<KeptText> find_kept_text(const std::string& folder, const std::string& file);

void drop_kept_text(const std::string& folder, const std::string& file);

/// Drops what was kept longer than 30 days ago.
void drop_old_texts(const std::string& folder);

} // namespace Lumenfold
