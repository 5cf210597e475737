#pragma once

#include "app/context/context.h"
#include "site/result.h"

#include <functional>
#include <string>

namespace Lumenfold {

/// Asks with the label "Remove"; then writes the pending edits, runs `remove`, and ends as
/// `finish_change` does.
void confirm_removal(const Context& context, const std::string& title, const std::string& message,
                     std::function<Result(const Context& context)> remove);

/// Ends a change of a list: reloads after one that was made, and after one refused because the file
/// has changed. A refusal is told under `title`.
void finish_change(const Context& context, const std::string& title, const Result& result);

/// The position behind `prefix` in a row id such as "dep-3"; -1 for any other text.
long row_position(const std::string& row_id, const std::string& prefix);

} // namespace Lumenfold
