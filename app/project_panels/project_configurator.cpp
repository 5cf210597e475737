#include "app/project_panels/project_configurator.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/context/window_paths.h"
#include "app/editing/disk_watch.h"
#include "app/editing/text_view.h"
#include "app/project_panels/facts_panel.h"
#include "app/project_panels/family_bar.h"
#include "app/project_panels/link_cards.h"
#include "app/project_panels/project_build_panel.h"
#include "app/project_panels/project_files.h"
#include "app/project_panels/project_form.h"
#include "app/project_panels/promote_dialog.h"
#include "app/project_panels/source_documents.h"
#include "app/project_panels/source_panel.h"
#include "app/project_panels/topics_panel.h"
#include "app/project_panels/versions_panel.h"
#include "app/tabs/section_tabs.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace Lumenfold {
namespace {

void wire_project_panel(const Context& context) {
    wire_project_form(context);
    wire_facts(context);
    wire_promote_dialog(context);
}

void fill_project_panel(const Context& context, const Json& project) {
    fill_project_form(context, project);
    fill_facts(context, project);
    offer_promotion(context);
}

// clang-format off
constexpr Section SECTIONS[] = {
    {"Project Tab",      "Project Panel",      wire_project_panel,       fill_project_panel},
    {"Source Tab",       "Source Panel",       wire_source_panel,        fill_source_panel},
    {"Readme Tab",       "Readme Panel",       wire_readme,              fill_readme},
    {"License Tab",      "License Panel",      wire_license,             fill_license},
    {"Topics Tab",       "Topics Panel",       wire_topics_panel,        fill_topics_panel},
    {"Dependencies Tab", "Dependencies Panel", wire_dependencies,        fill_dependencies},
    {"Versions Tab",     "Versions Panel",     nullptr,                  fill_versions_panel},
    {"Downloads Tab",    "Downloads Panel",    wire_downloads,           fill_downloads},
    {"Build Tab",        "Build Panel",        wire_project_build_panel, nullptr},
};
// clang-format on

/// The only section that a family's overview has.
const Section& OVERVIEW_SECTION = SECTIONS[0];

/// What the sections share about the member shown.
void read_member_state(const Context& context, const Json& project, const Member& shown) {
    ProjectState& state = context->project;
    state.umbrella = shown.umbrella;
    state.source_path = text_at_pointer(project, "/build/source_path");
    read_manifest_state(context);
    find_latest_version(context, project);
}

void show_umbrella(const Context& context, bool umbrella) {
    Corvel::CorvelApp& app = context->app;
    const Shell& configurator = context->project_configurator;
    for (const Section& section : SECTIONS)
        app.set_visible(configurator.sidebar + "/" + section.tab,
                        !umbrella || &section == &OVERVIEW_SECTION);
    const std::string tab = configurator.sidebar + "/" + OVERVIEW_SECTION.tab;
    app.set_text(tab + "/Label", umbrella ? "Project Family" : "Project");
    app.set_state(tab, "Family", umbrella);
    if (umbrella)
        show_tab(context, context->project_configurator, OVERVIEW_SECTION.tab);
}

void fill_project_panels(const Context& context) {
    const std::vector<Member>& members = active_config(*context).members;
    if (members.empty())
        return;
    context->active_member = std::min(context->active_member, members.size() - 1);
    const Member& shown = members[context->active_member];
    const Json project = start_editing(context, shown.path);
    for (const Member& member : members)
        watch_file(*context, path_from_utf8(member.path));
    watch_file(*context, site_config_above(*context));
    read_member_state(context, project, shown);
    for (const Section& section : SECTIONS)
        if (section.fill)
            section.fill(context, project);
    show_umbrella(context, shown.umbrella);
    build_family_tabs(context);
}

} // namespace

ConfiguratorParts project_configurator_parts() {
    return {
        .root = Paths::PROJECT_CONFIGURATOR,
        .sections = SECTIONS,
        .guards =
            {{"README editor",
              [](AppContext& context) -> FileEditor& { return context.project.readme.editor; }},
             {"License editor",
              [](AppContext& context) -> FileEditor& { return context.project.license.editor; }},
             {"Topics editor",
              [](AppContext& context) -> FileEditor& { return context.project.topics.editor; }}},
        .reload = fill_project_panels};
}

} // namespace Lumenfold
