#pragma once

#include "app/context/edit_state.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Lumenfold {

// Kept texts lie in a folder of the application's own, one file for each, which only its user can
// read. An empty folder keeps nothing. Whatever fails is silent: the text is still on screen.

/// What becomes of a text that was kept of the same file before.
enum class KeptBefore : std::uint8_t {
    Replaced,
    Stays ///< behind the new one, and is found once that is dropped
};

/// Keeps `text` as what `file` (an absolute path) is to hold. `begun_on` is what the file held when
/// the text was begun.
void keep_text(const std::string& folder, const std::string& file, const std::string& text,
               const std::string& begun_on, KeptBefore before = KeptBefore::Replaced);

/// The text kept last; nothing if there is none.
std::optional<KeptText> find_kept_text(const std::string& folder, const std::string& file);

/// Drops the text kept last.
void drop_kept_text(const std::string& folder, const std::string& file);

/// Drops this one of the texts kept.
void drop_kept_text(const std::string& folder, const std::string& file, const std::string& text);

/// Drops what was kept longer than 30 days ago.
void drop_old_texts(const std::string& folder);

} // namespace Lumenfold
