#pragma once

#include "app/context/context.h"

namespace Corvel {
class CorvelApp;
}

namespace Lumenfold {

/// Names the root, makes the title bar's tabs and the shared record, and hides the configurators
/// until a configuration opens.
Context open_main_window(Corvel::CorvelApp& app);

} // namespace Lumenfold
