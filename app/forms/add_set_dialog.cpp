#include "app/forms/add_set_dialog.h"

#include "app/context/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/editing/reload.h"
#include "app/forms/dialog_frame.h"
#include "runtime/corvel_app.h"
#include "site/import_file.h"
#include "site/json_file.h"
#include "site/path_text.h"
#include "site/slug.h"
#include "site/text_helpers.h"

#include <filesystem>
#include <memory>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

const std::string CREATE_BUTTON = "/Body/Actions/Create Button";

/// Which derived fields the user took over; they are overwritten no longer.
struct Derivation {
    bool slug_edited = false;
    bool file_edited = false;
    std::string picked; ///< a file outside, as the field shows it; empty for none
};

std::string default_file(const AddSetDialog& dialog, const std::string& slug) {
    return slug.empty() ? std::string() : dialog.file_folder + slug + ".md";
}

void derive_file(const Context& context, const AddSetDialog& dialog, const Derivation& derivation,
                 const std::string& slug) {
    if (!derivation.file_edited)
        fill_editor(context->app, dialog.file_editor, default_file(dialog, slug));
}

void name_changed(const Context& context, const AddSetDialog& dialog, const Derivation& derivation,
                  const std::string& text) {
    if (derivation.slug_edited)
        return;
    const std::string slug = slugify(text);
    fill_editor(context->app, dialog.slug_editor, slug);
    derive_file(context, dialog, derivation, slug);
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
    const bool inside = lies_within(comparable_path(file), comparable_path(base));
    const std::u8string text =
        (inside ? comparable_path(file).lexically_relative(comparable_path(base)) : file)
            .generic_u8string();
    return {text.begin(), text.end()};
}

void browse(const Context& context, const AddSetDialog& dialog,
            const std::shared_ptr<Derivation>& derivation) {
    if (!anything_is_open(*context))
        return;
    Corvel::PickRequest request;
    request.mode = "file";
    request.title = dialog.pick_title;
    request.filter = "Markdown (*.md *.markdown);;All Files (*)";
    request.directory = dialog.start_folder(*context);
    context->app.pick_file(request, [context, &dialog, derivation](const std::string& path) {
        if (path.empty())
            return;
        const fs::path base = path_from_utf8(dialog.base_folder(*context));
        const fs::path file = path_from_utf8(path);
        const std::string reference = file_reference(file, base);
        fill_editor(context->app, dialog.file_editor, reference);
        derivation->file_edited = true;
        derivation->picked =
            lies_within(comparable_path(file), comparable_path(base)) ? std::string() : reference;
    });
}

void open(const Context& context, const AddSetDialog& dialog, Derivation& derivation) {
    if (!dialog.available(*context))
        return;
    derivation = {};
    for (const std::string& editor :
         {dialog.name_editor, dialog.slug_editor, dialog.title_editor, dialog.file_editor})
        fill_editor(context->app, editor, "");
    for (const std::string& editor : dialog.other_editors)
        fill_editor(context->app, editor, "");
    if (!dialog.checkbox.empty())
        context->app.set_checked(dialog.checkbox, true);
    context->app.set_visible(dialog.path, true);
}

SetEntry entered(const AppContext& context, const AddSetDialog& dialog) {
    SetEntry entry;
    entry.name = trimmed_value(context, dialog.name_editor);
    entry.slug = trimmed_value(context, dialog.slug_editor);
    entry.title = trimmed_value(context, dialog.title_editor);
    entry.file = trimmed_value(context, dialog.file_editor);
    if (entry.title.empty())
        entry.title = dialog.default_title(context, entry.name);
    if (entry.file.empty())
        entry.file = default_file(dialog, entry.slug);
    return entry;
}

/// Makes a missing Markdown file with its folder, with `title` as heading.
void create_markdown_file(const std::string& file, const std::string& title) {
    const fs::path path = path_from_utf8(file);
    if (!file.empty() && !is_occupied(path))
        // The editor shows what became of it.
        (void)write_text_file_in_folders(path, "# " + title + "\n");
}

/// Copies a file that was picked outside to where entries may refer to it. False if that failed,
/// which is told.
bool import_picked(const Context& context, const AddSetDialog& dialog, SetEntry& entry) {
    ImportedFile copy;
    const Result copied =
        import_file(path_from_utf8(dialog.base_folder(*context)), dialog.import_folder,
                    path_from_utf8(entry.file), NameTaken::FreeName, copy);
    if (!copied)
        context->message_dialog.show(dialog.failure_title, copied.error());
    entry.file = copy.reference;
    return static_cast<bool>(copied);
}

void create(const Context& context, const AddSetDialog& dialog, const Derivation& derivation) {
    SetEntry entry = entered(*context, dialog);
    if (!dialog.available(*context) || entry.name.empty() || entry.slug.empty())
        return;
    const bool is_picked = !entry.file.empty() && entry.file == derivation.picked;
    if (is_picked && !dialog.import_folder.empty() && !import_picked(context, dialog, entry))
        return;
    flush_edits(context);
    std::string error;
    if (!dialog.add(*context, entry, &error)) {
        context->message_dialog.show(dialog.failure_title, error);
        return;
    }
    create_markdown_file(dialog.resolve(*context, entry.file), entry.title);
    context->app.set_visible(dialog.path, false);
    reload_after_change(context);
}

} // namespace

void wire_add_set_dialog(const Context& context, const AddSetDialog& dialog) {
    Corvel::CorvelApp& app = context->app;
    const auto derivation = std::make_shared<Derivation>();
    wire_dialog_frame(context, dialog.path);
    app.on_click(dialog.open_button,
                 [context, &dialog, derivation] { open(context, dialog, *derivation); });
    app.on_input(dialog.name_editor, [context, &dialog, derivation](const std::string& text) {
        name_changed(context, dialog, *derivation, text);
    });
    app.on_input(dialog.slug_editor, [context, &dialog, derivation](const std::string& text) {
        take_over(context, dialog.slug_editor, text, derivation->slug_edited);
        derive_file(context, dialog, *derivation, trim(text));
    });
    app.on_input(dialog.file_editor, [context, &dialog, derivation](const std::string& text) {
        take_over(context, dialog.file_editor, text, derivation->file_edited);
    });
    app.on_click(dialog.browse_button,
                 [context, &dialog, derivation] { browse(context, dialog, derivation); });
    app.on_click(dialog.path + CREATE_BUTTON,
                 [context, &dialog, derivation] { create(context, dialog, *derivation); });
}

} // namespace Lumenfold
