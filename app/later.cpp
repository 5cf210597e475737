#include "app/later.h"

#include "app/app_context.h"
#include "runtime/corvel_app.h"

#include <utility>

namespace Lumenfold {

void run_later(const Context& context, int milliseconds, std::function<void()> action) {
    if (!context->app.run_after)
        return;
    context->app.run_after(milliseconds,
                           [context, path = context->edits.path, action = std::move(action)] {
                               if (context->edits.path == path)
                                   action();
                           });
}

} // namespace Lumenfold
