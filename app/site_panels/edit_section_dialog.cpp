#include "app/site_panels/edit_section_dialog.h"

#include "app/context/app_context.h"
#include "app/context/window_paths.h"
#include "app/editing/file_editor.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"

namespace Lumenfold {

namespace {

const std::string DIALOG = Paths::EDIT_SECTION_DIALOG;
const std::string TITLE = DIALOG + "/Titlebar/Title";
const std::string EXIT_BUTTON = DIALOG + "/Titlebar/Exit Button";
const std::string DONE_BUTTON = DIALOG + "/Body/Done Row/Done Button";
const std::string EDITOR_GROUP = DIALOG + "/Body/Editor Group";

/// Hides the dialog and forgets its file: no reload refills this editor, so what is discarded here
/// would count as unsaved for ever.
void close(const Context& context) {
    discard_unsaved_texts(context, context->site.section_editor);
    empty_file_editor(context, context->site.section_editor);
    context->app.set_visible(DIALOG, false);
}

void ask_to_close(const Context& context) {
    if (!file_editor_dirty(*context, context->site.section_editor)) {
        close(context);
        return;
    }
    context->confirm_dialog.show("Discard changes?",
                                 "This section's content has unsaved changes. Discard them?",
                                 "Discard", close);
}

} // namespace

void wire_edit_section_dialog(const Context& context) {
    Corvel::CorvelApp& app = context->app;
    app.set_visible(DIALOG, false);
    wire_file_editor(context, context->site.section_editor, EDITOR_GROUP + "/File Status Bar",
                     EDITOR_GROUP + "/File Editor", "Content file not found");
    for (const std::string& button : {EXIT_BUTTON, DONE_BUTTON})
        app.on_click(button, [context] { ask_to_close(context); });
}

void open_section_editor(const Context& context, const std::string& body,
                         const std::string& label) {
    const std::size_t start = body.find_first_not_of('/');
    if (!anything_is_open(*context) || start == std::string::npos)
        return;
    const std::filesystem::path folder = path_from_utf8(context->edits.path).parent_path();
    load_file_editor(context, context->site.section_editor,
                     path_to_utf8(folder / path_from_utf8(body.substr(start))));
    context->app.set_text(TITLE, label.empty() ? "Edit Section Content" : "Edit: " + label);
    context->app.set_visible(DIALOG, true);
}

} // namespace Lumenfold
