#include "app/editing/reload.h"

#include "app/app_context.h"
#include "app/editing/editor_text.h"
#include "app/editing/file_editor.h"
#include "runtime/corvel_app.h"

#include <vector>

namespace Lumenfold {

namespace {

struct KeptText {
    FileEditor* editor;
    std::string path;
    std::string text;
};

} // namespace

void reload(const Context& context) {
    if (!context->edits.path.empty() && context->shell->reload)
        context->shell->reload(context);
}

void reload_after_change(const Context& context) {
    if (context->edits.path.empty())
        return;
    Corvel::CorvelApp& app = context->app;
    std::vector<KeptText> kept;
    for (const Guard& guard : context->shell->guards)
        if (file_editor_dirty(app, *guard.editor))
            kept.push_back({guard.editor.get(), guard.editor->path,
                            app.input_value(guard.editor->editor_path)});
    reload(context);
    for (const auto& [editor, path, text] : kept) {
        if (editor->path != path || !editor->found)
            continue;
        fill_editor(app, editor->editor_path, text);
        refresh_file_editor(app, *editor);
    }
}

} // namespace Lumenfold
