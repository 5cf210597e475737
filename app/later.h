#pragma once

#include "app/shell.h"

#include <functional>

namespace Lumenfold {

/// How long an image node stays empty so that a file changed under its old name is read again.
inline constexpr int REREAD_DELAY_MS = 30;

/// Runs `action` after a delay, unless another configuration is the active one by then.
void run_later(const Context& context, int milliseconds, std::function<void()> action);

} // namespace Lumenfold
