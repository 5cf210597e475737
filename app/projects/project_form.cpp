#include "app/projects/project_form.h"

#include "app/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/editing/reload.h"
#include "app/json_view.h"
#include "app/panels/image_import.h"
#include "app/projects/family_bar.h"
#include "app/projects/project_files.h"
#include "app/projects/project_state.h"
#include "app/projects/source_documents.h"
#include "app/projects/topics_panel.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/records.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {
namespace {

/// A field that edits one string of the configuration.
struct FormField {
    const char* node; ///< below the panels
    const char* pointer;
};

constexpr FormField FIELDS[] = {
    {"/Project Panel/Project Form/Slug Field", "/slug"},
    {"/Project Panel/Project Form/Name Field", "/name"},
    {"/Project Panel/Project Form/Tagline Field", "/tagline"},
    {"/Source Panel/Repo Form/Platform Field", "/repo/platform"},
    {"/Source Panel/Repo Form/Path Field", "/repo/path"},
    {"/Source Panel/Repo Form/URL Field", "/repo/url"},
};
constexpr const char* SOURCE_PATH_FIELD = "/Source Panel/Local Form/Source Path Field";
constexpr const char* SOURCE_PATH_POINTER = "/build/source_path";
constexpr const char* REPO_FORM = "/Source Panel/Repo Form";
constexpr const char* REPOSITORY_LABEL = "/Source Panel/Repository Label";
constexpr const char* ADD_REPOSITORY_BUTTON = "/Source Panel/Add Repository Button";
constexpr const char* LOGO_IMAGE = "/Project Panel/Logo Picker/Avatar/Logo Image";
constexpr const char* LOGO_PLACEHOLDER = "/Project Panel/Logo Picker/Avatar/Placeholder";
constexpr const char* LOGO_BROWSE_BUTTON = "/Project Panel/Logo Picker/Controls Row/Browse Button";

std::string text_at_pointer(const Json& json, const char* pointer) {
    const Json::json_pointer place(pointer);
    if (!json.contains(place) || !json.at(place).is_string())
        return {};
    return json.at(place).get<std::string>();
}

void change_source_path(const Context& context, const std::string& text) {
    // Edits that wait for the manifest belong to the manifest of the old source root.
    if (!context->edits.manifest_pending.empty())
        flush_edits(context);
    queue_edit(context, SOURCE_PATH_POINTER, text);
    context->project->source_path = text;
    reload_source_document(context, context->project->readme);
    reload_source_document(context, context->project->license);
    reload_topic_file(context);
}

void use_logo(const Context& context, const std::filesystem::path& file) {
    const std::optional<ImportedImage> image = import_image(image_root(*context), file);
    if (!image)
        return;
    queue_edit(context, "/logo", image->reference);
    const std::string& panels = context->project_shell.panels;
    show_replaced_image(context, panels + LOGO_IMAGE, image->path);
    context->app.set_visible(panels + LOGO_PLACEHOLDER, false);
    set_member_logo(context, image->path);
}

void add_repository(const Context& context) {
    if (context->edits.path.empty())
        return;
    flush_edits(context);
    if (add_empty_object(path_from_utf8(context->edits.path), "repo", nullptr))
        reload_after_change(context);
}

} // namespace

void wire_project_form(const Context& context) {
    Corvel::CorvelApp& app = context->app;
    const std::string& panels = context->project_shell.panels;
    for (const FormField& field : FIELDS)
        app.on_input(panels + field.node,
                     [context, pointer = field.pointer](const std::string& text) {
                         queue_edit(context, pointer, text);
                     });
    app.on_input(panels + SOURCE_PATH_FIELD,
                 [context](const std::string& text) { change_source_path(context, text); });
    app.on_click(panels + ADD_REPOSITORY_BUTTON, [context] { add_repository(context); });
    app.on_click(panels + LOGO_BROWSE_BUTTON, [context] {
        pick_image(context, "Select a logo image (copied into your site)", IMAGE_FILTER,
                   [context](const std::filesystem::path& file) { use_logo(context, file); });
    });
}

void fill_project_form(const Context& context, const Json& project) {
    Corvel::CorvelApp& app = context->app;
    const std::string& panels = context->project_shell.panels;
    for (const FormField& field : FIELDS)
        fill_editor(app, panels + field.node, text_at_pointer(project, field.pointer));

    const std::string logo = text_at(project, "logo");
    const std::string logo_file = path_to_utf8(resolve_project_logo(member_folder(*context), logo));
    show_image(*context, panels + LOGO_IMAGE, logo_file);
    app.set_visible(panels + LOGO_PLACEHOLDER, logo_file.empty());

    const bool has_repository = member_at(project, "repo").is_object();
    app.set_visible(panels + REPO_FORM, has_repository);
    app.set_visible(panels + ADD_REPOSITORY_BUTTON, !has_repository);
    app.set_visible(panels + REPOSITORY_LABEL, true);

    context->project->source_path = text_at_pointer(project, SOURCE_PATH_POINTER);
    fill_editor(app, panels + SOURCE_PATH_FIELD, context->project->source_path);
}

} // namespace Lumenfold
