#pragma once

#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// A text as one line that shows on a terminal what it holds and does nothing to it: control
/// characters become their pictures (U+2400 and above), bytes that are not UTF-8 and the other
/// characters that end lines or turn the direction of writing become U+FFFD.
std::string visible_text(std::string_view text);

} // namespace Lumenfold::Builder
