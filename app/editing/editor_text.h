#pragma once

#include <string>

namespace Corvel {
class CorvelApp;
}

namespace Lumenfold {

/// Gives an Editor its text, whether it is on screen, hidden or not made yet, and whatever was
/// typed into it. The only way the application fills an Editor; `set_text` alone would leave a
/// live one as it is.
void fill_editor(Corvel::CorvelApp& app, const std::string& path, const std::string& text);

} // namespace Lumenfold
