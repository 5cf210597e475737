#pragma once

#include "app/context/context.h"

#include <cstddef>

namespace Lumenfold {

/// Brings both Build buttons in line with what can be built now: nothing while a build runs. The
/// project's tells how many versions wait for one.
void refresh_build_buttons(AppContext& context);

/// Sets the number of versions of the project shown that wait for a build.
void set_pending_count(AppContext& context, std::size_t count);

} // namespace Lumenfold
