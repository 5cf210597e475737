#pragma once

#include "runtime/corvel_app.h"

namespace Corvel {

/// Asks for a render after state changed outside a view event. The function may replace itself.
inline void notify_async_change(const CorvelApp& app) {
    if (const auto notify = app.on_async_change)
        notify();
}

} // namespace Corvel
