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
        return editor.found && changed_beneath(editor.keeper) ? "Changed on disk"
                                                              : "Unsaved changes";
    if (editor.keeper.offered)
        return offer_message(editor.keeper);
    if (!editor.problem.empty() || editor.found || editor.path.empty())
        return editor.problem;
    return editor.missing_text;
}

/// Brings the message and the save button in line with the text.
void refresh(const AppContext& context, FileEditor& editor) {
    const bool dirty = file_editor_dirty(context, editor);
    if (!dirty)
        editor.keeper.begun_on = editor.keeper.baseline;
    context.app.set_text(editor.status_path, status_message(editor, dirty));
    editor.save_disabled = !dirty;
    context.app.set_state(editor.save_path, "Disabled", editor.save_disabled);
}

UnsavedText shown_text(const AppContext& context, const FileEditor& editor) {
    return {context.app.input_value(editor.editor_path), editor.keeper.begun_on};
}

void remember_unsaved(const AppContext& context, FileEditor& editor) {
    if (!file_editor_dirty(context, editor))
        return;
    editor.unsaved[editor.keeper.file] = shown_text(context, editor);
    keep_now(context, editor.keeper);
}

void show(const Context& context, FileEditor& editor, const std::string& path,
          const std::optional<UnsavedText>& unsaved) {
    editor.path = path;
    const std::optional<std::string> content = read_shown(editor);
    const std::string baseline = content.value_or(std::string());
    editor.found = content.has_value();
    start_keeping(*context, editor.keeper, file_key(path), baseline);
    fill_editor(context->app, editor.editor_path, unsaved ? unsaved->text : baseline);
    if (unsaved)
        go_on_keeping(*context, editor.keeper, unsaved->begun_on);
    set_locked(context->app, editor, !editor.found && !unsaved);
    refresh(*context, editor);
}

void write(const Context& context, FileEditor& editor) {
    const std::filesystem::path file = path_from_utf8(editor.path);
    const std::string text = context->app.input_value(editor.editor_path);
    if (!save_text(context, file, text))
        return;
    editor.found = true;
    stop_keeping(*context, editor.keeper);
    start_keeping(*context, editor.keeper, editor.keeper.file, text);
    refresh(*context, editor);
}

void save(const Context& context, FileEditor& editor) {
    compare_with_disk(context, editor);
    if (editor.save_disabled || editor.path.empty())
        return;
    if (!editor.found || !changed_beneath(editor.keeper)) {
        write(context, editor);
        return;
    }
    // Others may write once more while the question is open.
    ask_to_overwrite(context, [&editor, path = editor.path,
                               seen = editor.keeper.baseline](const Context& later) {
        if (editor.path != path)
            return;
        editor.keeper.begun_on = seen;
        save(later, editor);
    });
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
    wire_text_keeper(context, editor.keeper, status_bar, editor_path, [context, &editor] {
        if (is_unsaved(*context, editor.keeper))
            set_locked(context->app, editor, false); // text taken back of a file that is gone
        refresh(*context, editor);
    });
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
    if (content.has_value() == editor.found &&
        content.value_or(std::string()) == editor.keeper.baseline)
        return;
    if (file_editor_dirty(*context, editor))
        show(context, editor, editor.path, shown_text(*context, editor));
    else
        show(context, editor, editor.path, std::nullopt);
}

bool file_editor_dirty(const AppContext& context, const FileEditor& editor) {
    return !editor.locked && is_unsaved(context, editor.keeper);
}

bool has_unsaved_text(const AppContext& context, const FileEditor& editor) {
    return !editor.unsaved.empty() || file_editor_dirty(context, editor);
}

} // namespace Lumenfold
