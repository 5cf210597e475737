#pragma once

#include "app/shell.h"

namespace Corvel {
class CorvelApp;
}

namespace Lumenfold {

/// Names the root, makes the title bar's tabs and the shared records, and hides what no
/// configuration or action has called for yet.
Context open_main_window(Corvel::CorvelApp& app);

} // namespace Lumenfold
