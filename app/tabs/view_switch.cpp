#include "app/tabs/view_switch.h"

#include "app/context/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/reload.h"
#include "app/editing/text_view.h"
#include "app/tabs/leave_guard.h"
#include "runtime/corvel_app.h"

namespace Lumenfold {

namespace {

const std::string EDITOR = "editor";
const std::string TEXT = "text";

std::string view_tab(const Shell& configurator, const std::string& view) {
    return configurator.root + "/View Bar/" + (view == EDITOR ? "Editor" : "Text") + " View Tab";
}

void ask_to_discard(const Context& context, const std::string& message, Continuation action) {
    context->confirm_dialog.show("Discard changes?", message, "Discard", std::move(action));
}

void switch_to_editor(const Context& context, Shell& configurator) {
    const auto go = [&configurator](const Context& later) {
        reload(later);
        set_view(later, configurator, EDITOR);
    };
    if (text_view_dirty(*context, configurator))
        ask_to_discard(context,
                       "The Text view has unsaved changes. Switching to the Editor will discard "
                       "them.",
                       go);
    else
        go(context);
}

void switch_to_text(const Context& context, Shell& configurator) {
    const auto go = [&configurator](const Context& later) {
        flush_edits(later);
        reload(later);
        set_view(later, configurator, TEXT);
    };
    if (const Guard* guard = first_dirty_guard(*context, configurator))
        ask_to_discard(
            context,
            "The " + guard->name + " has unsaved changes. Switching views will discard them.", go);
    else
        go(context);
}

} // namespace

void set_view(const Context& context, Shell& configurator, const std::string& view) {
    if (view == configurator.view)
        return;
    Corvel::CorvelApp& app = context->app;
    if (!configurator.view.empty())
        app.remove_state(view_tab(configurator, configurator.view), "Active");
    app.add_state(view_tab(configurator, view), "Active");
    configurator.view = view;
    app.set_visible(configurator.editor_panel, view == EDITOR);
    app.set_visible(configurator.text_panel, view == TEXT);
}

void wire_view_tabs(const Context& context, Shell& configurator) {
    context->app.on_click(view_tab(configurator, EDITOR), [context, &configurator] {
        if (configurator.view != EDITOR)
            switch_to_editor(context, configurator);
    });
    context->app.on_click(view_tab(configurator, TEXT), [context, &configurator] {
        if (configurator.view != TEXT)
            switch_to_text(context, configurator);
    });
    set_view(context, configurator, EDITOR);
}

} // namespace Lumenfold
