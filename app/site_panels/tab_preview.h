#pragma once

#include "app/context/context.h"

#include <string>
#include <string_view>

namespace Lumenfold {

/// Brings the two previews of the site's browser tab in line with the preview state.
void update_tab_preview(const Context& context);

/// Whether the text may be stored as a logo height: empty, or a number of at most 3 digits and at
/// most 40, with "p" or "px" in either case or nothing behind it.
bool is_valid_height(std::string_view text);

/// The pixels that a stored height means, `fallback` when it means none.
int parse_height(std::string_view text, int fallback);

} // namespace Lumenfold
