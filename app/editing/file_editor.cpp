#include "app/editing/file_editor.h"

#include "app/edit_state.h"
#include "app/editing/editor_text.h"
#include "runtime/corvel_app.h"
#include "site/json_file.h"
#include "site/path_text.h"

#include <optional>

namespace Lumenfold {

namespace {

void set_save_disabled(Corvel::CorvelApp& app, FileEditor& editor, bool disabled) {
    if (disabled != editor.save_disabled)
        app.toggle_state(editor.save_path, "Disabled");
    editor.save_disabled = disabled;
}

void save(Corvel::CorvelApp& app, FileEditor& editor) {
    if (!editor.found || editor.save_disabled || editor.path.empty())
        return;
    const std::string text = app.input_value(editor.editor_path);
    if (!write_text_file(path_from_utf8(editor.path), text))
        return;
    editor.baseline = text;
    refresh_file_editor(app, editor);
}

} // namespace

std::shared_ptr<FileEditor> make_file_editor(const std::string& status_bar,
                                             const std::string& editor_path,
                                             const std::string& missing_text) {
    auto editor = std::make_shared<FileEditor>();
    editor->status_path = status_bar + "/Status Message";
    editor->wrap_path = status_bar + "/Wrap Checkbox";
    editor->save_path = status_bar + "/Save Button";
    editor->editor_path = editor_path;
    editor->missing_text = missing_text;
    return editor;
}

void wire_file_editor(Corvel::CorvelApp& app, const std::shared_ptr<FileEditor>& editor) {
    app.add_state(editor->save_path, "Disabled");
    app.set_checked(editor->wrap_path, true);
    app.on_input(editor->editor_path,
                 [&app, editor](const std::string&) { refresh_file_editor(app, *editor); });
    app.on_click(editor->wrap_path,
                 [&app, editor] { app.toggle_state(editor->editor_path, "NoWrap"); });
    app.on_click(editor->save_path, [&app, editor] { save(app, *editor); });
}

void load_file_editor(Corvel::CorvelApp& app, FileEditor& editor, const std::string& path) {
    std::optional<std::string> content;
    if (!path.empty())
        content = read_text_file(path_from_utf8(path));
    editor.path = path;
    editor.found = content.has_value();
    editor.baseline = content.value_or(std::string());
    fill_editor(app, editor.editor_path, editor.baseline);
    if (editor.locked == editor.found) {
        app.toggle_state(editor.editor_path, "Locked");
        editor.locked = !editor.found;
    }
    refresh_file_editor(app, editor);
}

void refresh_file_editor(Corvel::CorvelApp& app, FileEditor& editor) {
    const bool dirty = file_editor_dirty(app, editor);
    std::string message;
    if (dirty)
        message = "Unsaved changes";
    else if (!editor.found && !editor.path.empty())
        message = editor.missing_text;
    app.set_text(editor.status_path, message);
    set_save_disabled(app, editor, !dirty);
}

bool file_editor_dirty(const Corvel::CorvelApp& app, const FileEditor& editor) {
    return editor.found && app.input_value(editor.editor_path) != editor.baseline;
}

} // namespace Lumenfold
