#include "app/editing/view_switch.h"

#include "app/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/reload.h"
#include "app/editing/text_view.h"
#include "app/shell/leave_guard.h"
#include "runtime/corvel_app.h"

namespace Lumenfold {

namespace {

const std::string EDITOR = "editor";
const std::string TEXT = "text";

std::string view_tab(const Shell& shell, const std::string& view) {
    return shell.root + "/View Bar/" + (view == EDITOR ? "Editor" : "Text") + " View Tab";
}

void ask_to_discard(const Context& context, const std::string& message, Continuation action) {
    context->confirm_dialog.show("Discard changes?", message, "Discard", std::move(action));
}

void switch_to_editor(const Context& context, Shell& shell) {
    const auto go = [&shell](const Context& later) {
        reload(later);
        set_view(later, shell, EDITOR);
    };
    if (text_view_dirty(*context, shell))
        ask_to_discard(context,
                       "The Text view has unsaved changes. Switching to the Editor will discard "
                       "them.",
                       go);
    else
        go(context);
}

void switch_to_text(const Context& context, Shell& shell) {
    const auto go = [&shell](const Context& later) {
        flush_edits(later);
        reload(later);
        set_view(later, shell, TEXT);
    };
    if (const Guard* guard = first_dirty_guard(*context, shell))
        ask_to_discard(
            context,
            "The " + guard->name + " has unsaved changes. Switching views will discard them.", go);
    else
        go(context);
}

} // namespace

void set_view(const Context& context, Shell& shell, const std::string& view) {
    if (view == shell.view)
        return;
    Corvel::CorvelApp& app = context->app;
    if (!shell.view.empty())
        app.remove_state(view_tab(shell, shell.view), "Active");
    app.add_state(view_tab(shell, view), "Active");
    shell.view = view;
    app.set_visible(shell.editor_panel, view == EDITOR);
    app.set_visible(shell.text_panel, view == TEXT);
}

void wire_view_tabs(const Context& context, Shell& shell) {
    context->app.on_click(view_tab(shell, EDITOR), [context, &shell] {
        if (shell.view != EDITOR)
            switch_to_editor(context, shell);
    });
    context->app.on_click(view_tab(shell, TEXT), [context, &shell] {
        if (shell.view != TEXT)
            switch_to_text(context, shell);
    });
    set_view(context, shell, EDITOR);
}

} // namespace Lumenfold
