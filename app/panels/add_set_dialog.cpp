#include "app/panels/add_set_dialog.h"

#include "app/app_context.h"
#include "app/editing/editor_text.h"
#include "app/panels/dialog_frame.h"
#include "runtime/corvel_app.h"
#include "site/json_file.h"
#include "site/path_text.h"
#include "site/records.h"

#include <filesystem>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

void derive_file(const Context& context, const AddSetDialog& dialog, const std::string& slug) {
    if (!dialog.state.file_edited)
        fill_editor(context->app, dialog.file_editor, default_set_file(dialog, slug));
}

void name_changed(const Context& context, const AddSetDialog& dialog, const std::string& text) {
    if (dialog.state.slug_edited)
        return;
    const std::string slug = slugify(text);
    fill_editor(context->app, dialog.slug_editor, slug);
    derive_file(context, dialog, slug);
}

/// Notes whether a derived field is the user's own now. A field left empty would get its last text
/// back from the view, as if typed; with an empty text there is nothing to bring back.
void take_over(const Context& context, const std::string& editor, const std::string& text,
               bool& edited) {
    edited = !text.empty();
    if (text.empty())
        context->app.set_text(editor, "");
}

/// A file inside `base` relative to it, any other as it is.
std::string file_reference(const fs::path& file, const fs::path& base) {
    const fs::path relative = comparable_path(file).lexically_relative(comparable_path(base));
    const bool inside = !relative.empty() && *relative.begin() != "..";
    const std::u8string text = (inside ? relative : file).generic_u8string();
    return {text.begin(), text.end()};
}

void browse(const Context& context, const std::shared_ptr<AddSetDialog>& dialog) {
    if (context->edits.path.empty())
        return;
    Corvel::PickRequest request;
    request.mode = "file";
    request.title = dialog->pick_title;
    request.filter = "Markdown (*.md *.markdown);;All Files (*)";
    request.directory = dialog->start_folder(*context);
    context->app.pick_file(request, [context, dialog](const std::string& path) {
        if (path.empty())
            return;
        const std::string base = dialog->base_folder(*context);
        fill_editor(context->app, dialog->file_editor,
                    file_reference(path_from_utf8(path), path_from_utf8(base)));
        dialog->state.file_edited = true;
    });
}

} // namespace

void wire_add_set_dialog(const Context& context, const std::shared_ptr<AddSetDialog>& dialog) {
    Corvel::CorvelApp& app = context->app;
    wire_dialog_frame(context, dialog->path);
    app.on_input(dialog->name_editor, [context, dialog](const std::string& text) {
        name_changed(context, *dialog, text);
    });
    app.on_input(dialog->slug_editor, [context, dialog](const std::string& text) {
        take_over(context, dialog->slug_editor, text, dialog->state.slug_edited);
        derive_file(context, *dialog, trim(text));
    });
    app.on_input(dialog->file_editor, [context, dialog](const std::string& text) {
        take_over(context, dialog->file_editor, text, dialog->state.file_edited);
    });
    app.on_click(dialog->browse_button, [context, dialog] { browse(context, dialog); });
}

void open_add_set_dialog(const Context& context, AddSetDialog& dialog) {
    dialog.state = {};
    for (const std::string& editor : {dialog.name_editor, dialog.slug_editor, dialog.file_editor})
        fill_editor(context->app, editor, "");
    for (const std::string& editor : dialog.other_editors)
        fill_editor(context->app, editor, "");
    context->app.set_visible(dialog.path, true);
}

std::string default_set_file(const AddSetDialog& dialog, const std::string& slug) {
    return slug.empty() ? std::string() : dialog.file_folder + slug + ".md";
}

void create_markdown_file(const std::string& file, const std::string& title) {
    const fs::path path = path_from_utf8(file);
    std::error_code error;
    if (file.empty() || is_occupied(path))
        return;
    fs::create_directories(path.parent_path(), error);
    write_text_file(path, "# " + title + "\n");
}

} // namespace Lumenfold
