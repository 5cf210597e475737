#include "app/editing/file_editor.h"

#include "app/context/app_context.h"
#include "app/editing/editor_text.h"
#include "app/editing/kept_texts.h"
#include "app/editing/saving.h"
#include "app/editing/text_keeper.h"
#include "runtime/corvel_app.h"
#include "site/json_file.h"
#include "site/path_text.h"

#include <optional>
#include <system_error>

namespace Lumenfold {

namespace {

/// One spelling for every way to a file.
std::string file_key(const std::string& path) {
    return path.empty() ? std::string() : path_to_utf8(comparable_path(path_from_utf8(path)));
}

std::optional<std::string> read_shown(const FileEditor& editor) {
    return editor.path.empty() ? std::nullopt : read_text_file(path_from_utf8(editor.path));
}

void set_locked(Corvel::CorvelApp& app, FileEditor& editor, bool locked) {
    editor.locked = locked;
    app.set_state(editor.editor_path, "Locked", locked);
}

std::string status_message(const FileEditor& editor, bool dirty) {
    if (dirty)
        return editor.changed_on_disk ? "Changed on disk" : "Unsaved changes";
    if (editor.keeper.offered)
        return offer_message(editor.keeper);
    if (editor.path.empty())
        return editor.problem;
    return editor.found ? std::string() : editor.missing_text;
}

/// Brings the message and the save button in line with the text.
void refresh(const AppContext& context, FileEditor& editor) {
    const bool dirty = file_editor_dirty(context, editor);
    context.app.set_text(editor.status_path, status_message(editor, dirty));
    editor.save_disabled = !dirty;
    context.app.set_state(editor.save_path, "Disabled", editor.save_disabled);
}

void remember_unsaved(const AppContext& context, FileEditor& editor) {
    if (!file_editor_dirty(context, editor))
        return;
    editor.unsaved[editor.keeper.file] = {context.app.input_value(editor.editor_path),
                                          editor.baseline};
    keep_now(context, editor.keeper);
}

void show(const Context& context, FileEditor& editor, const std::string& path,
          const std::optional<UnsavedText>& unsaved) {
    editor.path = path;
    const std::optional<std::string> content = read_shown(editor);
    editor.found = content.has_value();
    editor.baseline = content.value_or(std::string());
    editor.changed_on_disk = unsaved && editor.found && unsaved->baseline != editor.baseline;
    start_keeping(*context, editor.keeper, file_key(path), editor.baseline);
    if (unsaved)
        withdraw_offer(*context, editor.keeper);
    fill_editor(context->app, editor.editor_path, unsaved ? unsaved->text : editor.baseline);
    set_locked(context->app, editor, !editor.found && !unsaved);
    refresh(*context, editor);
}

void write(const Context& context, FileEditor& editor) {
    const std::filesystem::path file = path_from_utf8(editor.path);
    const std::string text = context->app.input_value(editor.editor_path);
    std::error_code ignored;
    if (!editor.found)
        std::filesystem::create_directories(file.parent_path(), ignored);
    if (!save_text(context, file, text))
        return;
    editor.baseline = text;
    editor.found = true;
    stop_keeping(*context, editor.keeper);
    start_keeping(*context, editor.keeper, editor.keeper.file, text);
    editor.changed_on_disk = false;
    refresh(*context, editor);
}

void save(const Context& context, FileEditor& editor) {
    if (editor.save_disabled || editor.path.empty())
        return;
    compare_with_disk(context, editor);
    if (!editor.changed_on_disk) {
        write(context, editor);
        return;
    }
    ask_to_overwrite(context, [&editor](const Context& later) { write(later, editor); });
}

} // namespace

void wire_file_editor(const Context& context, FileEditor& editor, const std::string& status_bar,
                      const std::string& editor_path, const std::string& missing_text) {
    editor.status_path = status_bar + "/Status Message";
    editor.wrap_path = status_bar + "/Wrap Checkbox";
    editor.save_path = status_bar + "/Save Button";
    editor.editor_path = editor_path;
    editor.missing_text = missing_text;
    Corvel::CorvelApp& app = context->app;
    app.add_state(editor.save_path, "Disabled");
    app.set_checked(editor.wrap_path, true);
    app.on_input(editor.editor_path, [context, &editor](const std::string&) {
        refresh(*context, editor);
        keep_later(context, editor.keeper);
    });
    wire_text_keeper(context, editor.keeper, status_bar, editor_path,
                     [context, &editor] { refresh(*context, editor); });
    app.on_click(editor.wrap_path,
                 [&app, &editor] { app.toggle_state(editor.editor_path, "NoWrap"); });
    app.on_click(editor.save_path, [context, &editor] { save(context, editor); });
}

void load_file_editor(const Context& context, FileEditor& editor, const std::string& path) {
    remember_unsaved(*context, editor);
    const auto found = editor.unsaved.find(file_key(path));
    if (found == editor.unsaved.end()) {
        show(context, editor, path, std::nullopt);
        return;
    }
    const UnsavedText text = found->second;
    editor.unsaved.erase(found);
    show(context, editor, path, text);
}

void discard_shown_text(const Context& context, FileEditor& editor) {
    if (file_editor_dirty(*context, editor))
        stop_keeping(*context, editor.keeper);
    show(context, editor, editor.path, std::nullopt);
}

void discard_unsaved_texts(const Context& context, FileEditor& editor) {
    for (const auto& [file, unsaved] : editor.unsaved)
        drop_kept_text(kept_folder(*context), file);
    editor.unsaved.clear();
    discard_shown_text(context, editor);
}

void empty_file_editor(const Context& context, FileEditor& editor) {
    remember_unsaved(*context, editor);
    editor.unsaved.clear();
    show(context, editor, "", std::nullopt);
}

void compare_with_disk(const Context& context, FileEditor& editor) {
    const std::optional<std::string> content = read_shown(editor);
    if (content.has_value() == editor.found && content.value_or(std::string()) == editor.baseline)
        return;
    if (!file_editor_dirty(*context, editor)) {
        show(context, editor, editor.path, std::nullopt);
        return;
    }
    const std::string text = context->app.input_value(editor.editor_path);
    show(context, editor, editor.path, UnsavedText{text, editor.baseline});
}

bool file_editor_dirty(const AppContext& context, const FileEditor& editor) {
    return !editor.locked && context.app.input_value(editor.editor_path) != editor.baseline;
}

bool has_unsaved_text(const AppContext& context, const FileEditor& editor) {
    return !editor.unsaved.empty() || file_editor_dirty(context, editor);
}

} // namespace Lumenfold
