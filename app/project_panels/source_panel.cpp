#include "app/project_panels/source_panel.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/editing/reload.h"
#include "app/editing/waiting_edits.h"
#include "app/forms/form_fields.h"
#include "app/project_panels/project_files.h"
#include "app/project_panels/source_documents.h"
#include "app/project_panels/topics_panel.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/records.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {
namespace {

constexpr FormField FIELDS[] = {
    {"/Source Panel/Repo Form/Platform Field", "/repo/platform"},
    {"/Source Panel/Repo Form/Path Field", "/repo/path"},
    {"/Source Panel/Repo Form/URL Field", "/repo/url"},
};
constexpr const char* SOURCE_PATH_FIELD = "/Source Panel/Local Form/Source Path Field";
constexpr const char* REPO_FORM = "/Source Panel/Repo Form";
constexpr const char* REPOSITORY_LABEL = "/Source Panel/Repository Label";
constexpr const char* ADD_REPOSITORY_BUTTON = "/Source Panel/Add Repository Button";

void change_source_path(const Context& context, const std::string& text) {
    // Edits that wait for the manifest belong to the manifest of the old source root.
    if (!context->edits.manifest_pending.empty())
        flush_edits(context);
    put_manifest_edits_aside(context);
    queue_edit(context, "/build/source_path", text);
    context->project.source_path = text;
    read_manifest_state(context);
    for (const auto fill : {fill_readme, fill_license, fill_topics_panel})
        fill(context, Json());
}

void add_repository(const Context& context) {
    if (!anything_is_open(*context))
        return;
    flush_edits(context);
    if (add_empty_object(path_from_utf8(context->edits.path), "repo", nullptr))
        reload_after_change(context);
}

} // namespace

void wire_source_panel(const Context& context) {
    const std::string& panels = context->project_configurator.panels;
    wire_form_fields(context, panels, FIELDS);
    context->app.on_input(panels + SOURCE_PATH_FIELD, [context](const std::string& text) {
        change_source_path(context, text);
    });
    context->app.on_click(panels + ADD_REPOSITORY_BUTTON, [context] { add_repository(context); });
}

void fill_source_panel(const Context& context, const Json& project) {
    Corvel::CorvelApp& app = context->app;
    const std::string& panels = context->project_configurator.panels;
    fill_form_fields(context, panels, FIELDS, project);
    fill_editor(app, panels + SOURCE_PATH_FIELD, context->project.source_path);
    const bool has_repository = member_at(project, "repo").is_object();
    app.set_visible(panels + REPO_FORM, has_repository);
    app.set_visible(panels + ADD_REPOSITORY_BUTTON, !has_repository);
    app.set_visible(panels + REPOSITORY_LABEL, true);
}

} // namespace Lumenfold
