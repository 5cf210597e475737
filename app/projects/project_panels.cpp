#include "app/projects/project_panels.h"

#include "app/app_context.h"
#include "app/builds/project_build_panel.h"
#include "app/builds/versions_panel.h"
#include "app/editing/text_view.h"
#include "app/json_view.h"
#include "app/node_state.h"
#include "app/projects/facts_panel.h"
#include "app/projects/family_bar.h"
#include "app/projects/link_cards.h"
#include "app/projects/project_files.h"
#include "app/projects/project_form.h"
#include "app/projects/project_state.h"
#include "app/projects/source_documents.h"
#include "app/projects/topics_panel.h"
#include "app/shell/tabs.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/versions.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace Lumenfold {
namespace {

constexpr const char* PROJECT_TAB = "/Project Tab";
constexpr const char* FAMILY_LABEL = "/Project Panel/Family Label";
constexpr const char* PROMOTE_BUTTON = "/Project Panel/Promote Button";

/// The sections that a family's overview does not have.
constexpr const char* MEMBER_TABS[] = {"/Source Tab",    "/Readme Tab",       "/License Tab",
                                       "/Topics Tab",    "/Dependencies Tab", "/Versions Tab",
                                       "/Downloads Tab", "/Build Tab"};

void find_latest_version(const Context& context, const Json& project) {
    ProjectState& state = *context->project;
    state.latest_label = newest_version(discover_versions(member_folder(*context)));
    state.latest_date.clear();
    for (const Json& version : array_at(project, "versions"))
        if (!state.latest_label.empty() && text_at(version, "label") == state.latest_label) {
            state.latest_date = text_at(version, "release_date");
            return;
        }
}

void show_umbrella(const Context& context, bool umbrella) {
    Corvel::CorvelApp& app = context->app;
    const std::string& sidebar = context->project_shell.sidebar;
    for (const char* tab : MEMBER_TABS)
        app.set_visible(sidebar + tab, !umbrella);
    app.set_text(sidebar + PROJECT_TAB + "/Label", umbrella ? "Project Family" : "Project");
    set_state(app, sidebar + PROJECT_TAB, "Family", umbrella);
    if (umbrella)
        show_tab(context, context->project_shell, "Project Tab");
}

/// A family can be made of a plain project below a site.
void offer_promotion(const Context& context) {
    const bool offered =
        context->active.members.size() == 1 && !site_config_above(*context).empty();
    context->app.set_visible(context->project_shell.panels + FAMILY_LABEL, offered);
    context->app.set_visible(context->project_shell.panels + PROMOTE_BUTTON, offered);
}

void refill(const Context& context) {
    fill_project_panels(context, context->active, context->project->member_index);
}

} // namespace

void wire_project_panels(const Context& context) {
    context->project = std::make_shared<ProjectState>();
    wire_source_documents(context);
    wire_topics_panel(context);
    wire_project_build_panel(context);
    wire_project_form(context);
    wire_link_cards(context);
    wire_facts(context);
    context->project_shell.reload = refill;
}

void fill_project_panels(const Context& context, const OpenConfig& config, std::size_t member) {
    if (config.members.empty())
        return;
    ProjectState& state = *context->project;
    state.member_index = std::min(member, config.members.size() - 1);
    const Member& shown = config.members[state.member_index];
    state.umbrella = shown.umbrella;

    const std::string text = read_text_file(path_from_utf8(shown.path)).value_or(std::string());
    const Json project = parse_or_empty(text);
    start_editing(context, shown.path, text);

    fill_project_form(context, project);
    find_latest_version(context, project);
    fill_facts(context, project);
    fill_link_cards(context, project);
    refresh_versions(context);

    const Json build = manifest_build(*context);
    fill_source_documents(context, build);
    fill_topics_panel(context, build);
    offer_promotion(context);
    show_umbrella(context, state.umbrella);
    mark_member_tab(context);
}

} // namespace Lumenfold
