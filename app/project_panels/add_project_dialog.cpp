#include "app/project_panels/add_project_dialog.h"

#include "app/context/app_context.h"
#include "app/context/window_paths.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/editing/reload.h"
#include "app/forms/dialog_frame.h"
#include "app/project_panels/family_bar.h"
#include "app/project_panels/project_files.h"
#include "app/tabs/leave_guard.h"
#include "app/tabs/opening.h"
#include "runtime/corvel_app.h"
#include "site/new_project.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {
namespace {

const std::string DIALOG = Paths::ADD_PROJECT_DIALOG;
const std::string TITLE = DIALOG + "/Titlebar/Title";
const std::string NAME_EDITOR = DIALOG + "/Body/Name Editor";
const std::string SLUG_EDITOR = DIALOG + "/Body/Slug Editor";
const std::string TAGLINE_EDITOR = DIALOG + "/Body/Tagline Editor";
const std::string FAMILY_LABEL_EDITOR = DIALOG + "/Body/Family Label Editor";
const std::string CREATE_BUTTON = DIALOG + "/Body/Actions/Create Button";
const std::string ADD_MEMBER_BUTTON = Paths::PROJECT_CONFIGURATOR + "/Family Bar/Add Member Button";
constexpr const char* ADD_PROJECT_BUTTON = "/Projects Panel/Add Project Button";
constexpr const char* FAILURE_TITLE = "Couldn't Add Project";

/// What the dialog was opened for.
struct AddProjectState {
    std::string parent_slug; ///< empty for a plain new project
};

void open_dialog(const Context& context, AddProjectState& state, const std::string& parent_slug,
                 const std::string& family_name) {
    Corvel::CorvelApp& app = context->app;
    state.parent_slug = parent_slug;
    for (const std::string& editor :
         {NAME_EDITOR, SLUG_EDITOR, TAGLINE_EDITOR, FAMILY_LABEL_EDITOR})
        fill_editor(app, editor, "");
    const bool is_member = !parent_slug.empty();
    app.set_text(TITLE, is_member ? "New Project in " + family_name : "New Project");
    app.set_visible(FAMILY_LABEL_EDITOR, is_member);
    app.set_visible(DIALOG, true);
}

void open_for_family(const Context& context, AddProjectState& state) {
    flush_edits(context); // the slug and the name may be among them
    const Member* member = lead_member(active_config(*context).members);
    if (!member)
        return;
    const Json lead = read_json_file(path_from_utf8(member->path)).value_or(Json());
    const std::string slug = text_at(lead, "slug");
    if (slug.empty()) {
        context->message_dialog.show(FAILURE_TITLE, "The family's lead config has no slug.");
        return;
    }
    const std::string name = text_at(lead, "name");
    open_dialog(context, state, slug, name.empty() ? slug : name);
}

/// The site that the new project belongs to. Nothing, and words to the user where there are any,
/// when there is none.
std::filesystem::path site_file(const Context& context, const AddProjectState& state) {
    if (state.parent_slug.empty())
        return site_is_open(*context) ? path_from_utf8(active_config(*context).path)
                                      : std::filesystem::path();
    std::filesystem::path site = site_config_above(*context);
    if (site.empty())
        context->message_dialog.show(FAILURE_TITLE, "No .lumenfold-site found above this project.");
    return site;
}

void show_new_member(const Context& context, const std::filesystem::path& created) {
    OpenConfig& config = *find_config(*context, context->active_id);
    config.from_registry = true;
    std::vector<Member>& members = config.members;
    members.push_back(read_member(created, false));
    const std::size_t member = members.size() - 1;
    update_active_members(context);
    leave_guard(context, [member](const Context& shared) { show_member(shared, member); });
}

void create(const Context& context, const AddProjectState& state) {
    NewProjectRecord record;
    record.name = trimmed_value(*context, NAME_EDITOR);
    record.slug = trimmed_value(*context, SLUG_EDITOR);
    if (record.name.empty() || record.slug.empty())
        return;
    record.tagline = trimmed_value(*context, TAGLINE_EDITOR);
    record.parent_slug = state.parent_slug;
    if (!state.parent_slug.empty())
        record.family_label = trimmed_value(*context, FAMILY_LABEL_EDITOR);

    const std::filesystem::path site = site_file(context, state);
    if (site.empty())
        return;
    flush_edits(context);
    std::filesystem::path created;
    std::string error;
    if (!create_project(site, record, &created, &error)) {
        context->message_dialog.show(FAILURE_TITLE, error);
        return;
    }
    context->app.set_visible(DIALOG, false);
    if (!state.parent_slug.empty()) {
        show_new_member(context, created);
        return;
    }
    // The site may stay in front: unsaved text holds it back.
    reload_after_change(context);
    open_config(context, path_to_utf8(created));
}

} // namespace

void wire_add_project_dialog(const Context& context) {
    wire_dialog_frame(context, DIALOG);
    const auto state = std::make_shared<AddProjectState>();
    context->app.on_click(context->site_configurator.panels + ADD_PROJECT_BUTTON,
                          [context, state] { open_dialog(context, *state, "", ""); });
    context->app.on_click(ADD_MEMBER_BUTTON,
                          [context, state] { open_for_family(context, *state); });
    context->app.on_click(CREATE_BUTTON, [context, state] { create(context, *state); });
}

} // namespace Lumenfold
