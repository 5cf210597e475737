#pragma once

#include "app/shell.h"

#include <functional>

namespace Lumenfold {

/// Runs `action` after a delay, unless another configuration is the active one by then.
void run_later(const Context& context, int milliseconds, std::function<void()> action);

} // namespace Lumenfold
