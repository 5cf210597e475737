#include "app/project_panels/topics_panel.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/context/window_paths.h"
#include "app/editing/edit_queue.h"
#include "app/forms/dialog_frame.h"
#include "app/forms/set_panel.h"
#include "app/project_panels/project_files.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/records.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {
namespace {

const std::string PANEL = Paths::PROJECT_CONFIGURATOR + "/Editor Panel/Panels/Topics Panel";
const std::string DIALOG = Paths::ADD_TOPIC_DIALOG;
const std::string INTRO_EDITOR = DIALOG + "/Body/Intro Editor";

std::string source_folder(const AppContext& context) {
    return path_to_utf8(project_manifest(context).parent_path());
}

std::string guides_folder(const AppContext& context) {
    return path_to_utf8(project_manifest(context).parent_path() / "guides");
}

bool add(const AppContext& context, const SetEntry& entry, std::string* error) {
    return add_topic(project_manifest(context),
                     {.slug = entry.slug,
                      .label = entry.name,
                      .title = entry.title,
                      .intro = trimmed_value(context, INTRO_EDITOR),
                      .source = entry.file},
                     error);
}

std::string removal_question(const AppContext& context) {
    const std::string label = context.app.input_value(PANEL + "/Meta Form/Label Field");
    return "Remove topic '" + (label.empty() ? "this topic" : label) +
           "' from this project? The Markdown file stays on disk.";
}

const SetPanel TOPICS{
    .path = PANEL,
    .pointer_root = "/build/topics/",
    .label_key = "label",
    .numbered = "Topic ",
    .fields = {{"/Label Field", "label"},
               {"/Title Field", "title"},
               {"/Intro Field", "intro"},
               {"/Source Field", "source"}},
    .file_key = "source",
    .missing_text = "Topic source not found",
    .discard_message = "The Topics editor has unsaved changes. Switching topics will discard them.",
    .removal_title = "Remove Topic",
    .dialog = {.path = DIALOG,
               .open_button = PANEL + "/Selector Row/Add Button",
               .name_editor = DIALOG + "/Body/Label Editor",
               .slug_editor = DIALOG + "/Body/Slug Editor",
               .title_editor = DIALOG + "/Body/Title Editor",
               .file_editor = DIALOG + "/Body/Source Row/Source Editor",
               .browse_button = DIALOG + "/Body/Source Row/Browse Button",
               .other_editors = {INTRO_EDITOR},
               .checkbox = {},
               .file_folder = "guides/",
               .import_folder = {},
               .pick_title = "Select a topic Markdown file",
               .failure_title = "Couldn't Add Topic",
               .available = anything_is_open,
               .start_folder = guides_folder,
               .base_folder = source_folder,
               .default_title = [](const AppContext&, const std::string& name) { return name; },
               .add = add,
               .resolve = resolve_source},
    .state = [](AppContext& context) -> SetState& { return context.project.topics; },
    .queue = queue_manifest_edit,
    .removal_question = removal_question,
    .remove =
        [](const AppContext& context, const ShownRecord& shown) {
            return remove_topic(project_manifest(context), shown);
        },
};

} // namespace

void wire_topics_panel(const Context& context) {
    wire_set_panel(context, TOPICS);
}

void fill_topics_panel(const Context& context, const Json&) {
    context->project.topics.editor.problem = context->project.manifest_problem;
    fill_set_panel(context, TOPICS, array_at(*context->project.edited_build, "topics"));
}

} // namespace Lumenfold
