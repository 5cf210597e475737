#include "app/tabs/leave_guard.h"

#include "app/context/app_context.h"
#include "app/editing/file_editor.h"
#include "app/editing/reload.h"
#include "app/editing/text_view.h"

namespace Lumenfold {

namespace {

/// Names the first thing with unsaved work; empty if there is none.
std::string unsaved_work(AppContext& context) {
    if (!context.configurator)
        return {};
    if (text_view_dirty(context, *context.configurator))
        return "Text view";
    const Guard* guard = first_dirty_guard(context, *context.configurator);
    return guard ? guard->name : std::string();
}

} // namespace

const Guard* first_dirty_guard(AppContext& context, const Shell& configurator) {
    for (const Guard& guard : configurator.guards)
        if (has_unsaved_text(context, guard.editor(context)))
            return &guard;
    return nullptr;
}

void leave_guard(const Context& context, const Continuation& continuation) {
    const std::string name = unsaved_work(*context);
    if (name.empty()) {
        continuation(context);
        return;
    }
    context->confirm_dialog.show("Discard changes?",
                                 "The " + name +
                                     " has unsaved changes. Leaving this configuration will "
                                     "discard them.",
                                 "Discard", [continuation](const Context& later) {
                                     discard_unsaved(later);
                                     continuation(later);
                                 });
}

} // namespace Lumenfold
