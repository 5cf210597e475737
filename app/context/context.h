#pragma once

#include <memory>

namespace Lumenfold {

struct AppContext;

/// The one shared record of the application; every handler holds a reference of its own.
using Context = std::shared_ptr<AppContext>;

} // namespace Lumenfold
