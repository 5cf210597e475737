#include "app/shell/leave_guard.h"

#include "app/app_context.h"
#include "app/editing/file_editor.h"
#include "app/editing/text_view.h"

#include <utility>

namespace Lumenfold {

namespace {

/// Names the first thing with unsaved work; empty if there is none.
std::string unsaved_work(const AppContext& context) {
    if (!context.shell)
        return {};
    if (text_view_dirty(context, *context.shell))
        return "Text view";
    const Guard* guard = first_dirty_guard(context, *context.shell);
    return guard ? guard->name : std::string();
}

} // namespace

const Guard* first_dirty_guard(const AppContext& context, const Shell& shell) {
    for (const Guard& guard : shell.guards)
        if (file_editor_dirty(context.app, *guard.editor))
            return &guard;
    return nullptr;
}

void leave_guard(const Context& context, Continuation continuation) {
    const std::string name = unsaved_work(*context);
    if (name.empty()) {
        continuation(context);
        return;
    }
    context->confirm_dialog.show("Discard changes?",
                                 "The " + name +
                                     " has unsaved changes. Leaving this configuration will "
                                     "discard them.",
                                 "Discard", std::move(continuation));
}

} // namespace Lumenfold
