#pragma once

#include "app/shell.h"

#include <functional>
#include <string>

namespace Lumenfold {

/// Asks with the label "Remove"; then writes the pending edits, runs `remove` on the configuration
/// file, and reloads if it answers true. A refusal shows nothing.
void confirm_removal(const Context& context, const std::string& title, const std::string& message,
                     std::function<bool(const std::string& config_path)> remove);

/// The position behind `prefix` in a row id such as "dep-3"; -1 for any other text.
long row_position(const std::string& row_id, const std::string& prefix);

} // namespace Lumenfold
