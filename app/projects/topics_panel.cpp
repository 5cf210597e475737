#include "app/projects/topics_panel.h"

#include "app/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/file_editor.h"
#include "app/editing/reload.h"
#include "app/json_view.h"
#include "app/panels/add_set_dialog.h"
#include "app/panels/dialog_frame.h"
#include "app/panels/removal.h"
#include "app/projects/project_files.h"
#include "app/projects/project_state.h"
#include "app/shell/window_paths.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/records.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {
namespace {

const std::string DIALOG = Paths::ADD_TOPIC_DIALOG;
const std::string LABEL_EDITOR = DIALOG + "/Body/Label Editor";
const std::string SLUG_EDITOR = DIALOG + "/Body/Slug Editor";
const std::string TITLE_EDITOR = DIALOG + "/Body/Title Editor";
const std::string INTRO_EDITOR = DIALOG + "/Body/Intro Editor";
const std::string SOURCE_EDITOR = DIALOG + "/Body/Source Row/Source Editor";
const std::string SOURCE_BROWSE_BUTTON = DIALOG + "/Body/Source Row/Browse Button";
const std::string CREATE_BUTTON = DIALOG + "/Body/Actions/Create Button";

std::shared_ptr<SetPanel> make_panel(const std::string& path) {
    const auto panel = std::make_shared<SetPanel>();
    panel->path = path;
    panel->pointer_root = "/build/topics/";
    panel->label_key = "label";
    panel->numbered = "Topic ";
    panel->fields = {{"/Label Field", "label"},
                     {"/Title Field", "title"},
                     {"/Intro Field", "intro"},
                     {"/Source Field", "source"}};
    panel->file_key = "source";
    panel->discard_message =
        "The Topics editor has unsaved changes. Switching topics will discard them.";
    panel->editor = make_file_editor(path + "/File Status Bar", path + "/File Editor",
                                     "Topic source not found");
    panel->queue = queue_manifest_edit;
    panel->resolve = resolve_source;
    return panel;
}

std::string source_folder(const AppContext& context) {
    return path_to_utf8(project_manifest(context).parent_path());
}

std::shared_ptr<AddSetDialog> make_dialog() {
    const auto dialog = std::make_shared<AddSetDialog>();
    dialog->path = DIALOG;
    dialog->name_editor = LABEL_EDITOR;
    dialog->slug_editor = SLUG_EDITOR;
    dialog->file_editor = SOURCE_EDITOR;
    dialog->browse_button = SOURCE_BROWSE_BUTTON;
    dialog->other_editors = {TITLE_EDITOR, INTRO_EDITOR};
    dialog->file_folder = "guides/";
    dialog->pick_title = "Select a topic Markdown file";
    dialog->start_folder = [](const AppContext& context) {
        return path_to_utf8(project_manifest(context).parent_path() / "guides");
    };
    dialog->base_folder = source_folder;
    return dialog;
}

TopicRecord entered_topic(const AppContext& context, const AddSetDialog& dialog) {
    TopicRecord record;
    record.label = trimmed_value(context, LABEL_EDITOR);
    record.slug = trimmed_value(context, SLUG_EDITOR);
    record.title = trimmed_value(context, TITLE_EDITOR);
    record.intro = trimmed_value(context, INTRO_EDITOR);
    record.source = trimmed_value(context, SOURCE_EDITOR);
    if (record.title.empty())
        record.title = record.label;
    if (record.source.empty())
        record.source = default_set_file(dialog, record.slug);
    return record;
}

void create_topic(const Context& context, const AddSetDialog& dialog) {
    const TopicRecord record = entered_topic(*context, dialog);
    if (context->edits.path.empty() || record.label.empty() || record.slug.empty())
        return;
    flush_edits(context);
    const std::filesystem::path manifest = project_manifest(*context);
    std::string error;
    // A manifest of a later format is refused here as everywhere else.
    if (!check_format(manifest, &error) || !add_topic(manifest, record, &error)) {
        context->message_dialog.show("Couldn't Add Topic", error);
        return;
    }
    create_markdown_file(resolve_source(*context, record.source), record.title);
    context->app.set_visible(DIALOG, false);
    reload_after_change(context);
}

void remove_shown_topic(const Context& context) {
    const std::size_t index = context->project->topics->selection.index;
    const Json build = manifest_build(*context);
    const Json& topics = array_at(build, "topics");
    if (index >= topics.size())
        return;
    const std::string label = text_at(topics[index], "label");
    confirm_removal(context, "Remove Topic",
                    "Remove topic '" + (label.empty() ? "this topic" : label) +
                        "' from this project? The Markdown file stays on disk.",
                    [manifest = project_manifest(*context), index](const std::string&) {
                        return remove_topic(manifest, index);
                    });
}

} // namespace

void wire_topics_panel(const Context& context) {
    const std::shared_ptr<SetPanel> panel =
        make_panel(context->project_shell.panels + "/Topics Panel");
    context->project->topics = panel;
    wire_set_panel(context, panel);
    context->project_shell.guards.push_back({"Topics editor", panel->editor});

    const std::shared_ptr<AddSetDialog> dialog = make_dialog();
    wire_add_set_dialog(context, dialog);
    context->app.on_click(panel->path + "/Selector Row/Add Button", [context, dialog] {
        if (!context->edits.path.empty())
            open_add_set_dialog(context, *dialog);
    });
    context->app.on_click(panel->path + "/Selector Row/Remove Button",
                          [context] { remove_shown_topic(context); });
    context->app.on_click(CREATE_BUTTON, [context, dialog] { create_topic(context, *dialog); });
}

void fill_topics_panel(const Context& context, const Json& build) {
    fill_set_panel(context, *context->project->topics, array_at(build, "topics"));
}

void reload_topic_file(const Context& context) {
    SetPanel& panel = *context->project->topics;
    const std::string source = panel.selection.count == 0
                                   ? std::string()
                                   : context->app.input_value(set_field_path(panel, "source"));
    load_file_editor(context->app, *panel.editor, resolve_source(*context, source));
}

} // namespace Lumenfold
