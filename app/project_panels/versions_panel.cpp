#include "app/project_panels/versions_panel.h"

#include "app/builder/build_buttons.h"
#include "app/builder/builder.h"
#include "app/builder/porcelain.h"
#include "app/context/app_context.h"
#include "app/context/build_state.h"
#include "app/context/project_state.h"
#include "app/project_panels/facts_panel.h"
#include "app/project_panels/version_inclusion.h"
#include "runtime/corvel_app.h"
#include "site/versions.h"

#include <algorithm>
#include <utility>

namespace Lumenfold {
namespace {

constexpr const char* LIST = "versionRows";
constexpr const char* STATUS_MESSAGE = "/Versions Panel/Status Message";
constexpr const char* BUSY_ICON = "/Versions Panel/Busy Icon";
constexpr const char* TABLE = "/Versions Panel/Versions Table";
constexpr const char* VERSIONS_LIST = "/Versions Panel/Versions Table/Versions List";
constexpr const char* INCLUDE_CHECKBOX = "/Include Cell/Include Checkbox";
constexpr const char* NO_VERSIONS =
    "No versions yet — tag the project's repo (X.Y.Z) to list them here.";

std::string row_id(std::size_t position) {
    return "version-" + std::to_string(position);
}

/// What follows major and minor part in a tag, with its dot; the whole tag where it does not.
std::string patch_part(const VersionRowUi& row) {
    return row.version.starts_with(row.tag_mm + ".") ? row.version.substr(row.tag_mm.size())
                                                     : row.version;
}

void publish_rows(const Context& context) {
    Corvel::CorvelApp& app = context->app;
    const std::string& panels = context->project_configurator.panels;
    const std::vector<VersionRowUi>& versions = context->project.version_rows;
    std::vector<Corvel::ListEntry> rows;
    for (std::size_t i = 0; i < versions.size(); ++i)
        rows.push_back({row_id(i),
                        {{"tag_mm", versions[i].tag_mm},
                         {"tag_patch", patch_part(versions[i])},
                         {"released", versions[i].released},
                         {"status", version_status_text(versions[i].status)}}});
    app.set_rows(LIST, std::move(rows));
    app.set_visible(panels + TABLE, !versions.empty());
    app.set_visible(panels + BUSY_ICON, false);
    for (std::size_t i = 0; i < versions.size(); ++i) {
        const std::string row = panels + VERSIONS_LIST + "/" + row_id(i);
        const std::string checkbox = row + INCLUDE_CHECKBOX;
        app.set_checked(checkbox, versions[i].included);
        app.on_click(checkbox, [context, checkbox, i] { toggle_version(context, checkbox, i); });
        app.set_state(row, "Excluded", versions[i].status == "excluded");
        app.set_state(row, "Pending", versions[i].status == "pending");
        // A tag that does not begin with its version's name stands beside it as a word of its own.
        app.set_state(row, "Apart", !patch_part(versions[i]).starts_with("."));
    }
}

void show_messages(const Context& context, const std::vector<std::string>& messages) {
    std::string text;
    for (const std::string& message : messages)
        text += (text.empty() ? "" : "\n") + message;
    if (context->project.version_rows.empty() && messages.empty())
        text = NO_VERSIONS;
    const std::string path = context->project_configurator.panels + STATUS_MESSAGE;
    context->app.set_text(path, text);
    context->app.set_visible(path, !text.empty());
}

/// While the builder looks, an empty panel says so; a filled one keeps its table, unless that is
/// another project's.
void show_looking(const Context& context, const std::string& path) {
    ProjectState& state = context->project;
    if (state.versions_path != path) {
        state.versions_path = path;
        state.version_rows.clear();
        state.pending_count = 0;
    }
    state.looking_for_versions = state.version_rows.empty();
    refresh_build_buttons(*context);
    if (!state.looking_for_versions)
        return;
    publish_rows(context);
    const std::string& panels = context->project_configurator.panels;
    context->app.set_visible(panels + STATUS_MESSAGE, false);
    context->app.set_visible(panels + BUSY_ICON, true);
}

void take_listing(const Context& context, VersionListing listing, int code) {
    if (code == -1 || code == -2)
        listing.messages.push_back(BUILDER_DID_NOT_RUN);
    ProjectState& state = context->project;
    state.version_rows = std::move(listing.rows);
    state.looking_for_versions = false;
    publish_rows(context);
    show_messages(context, listing.messages);
    const auto pending =
        std::count_if(state.version_rows.begin(), state.version_rows.end(),
                      [](const VersionRowUi& row) { return row.status == "pending"; });
    set_pending_count(*context, code == 0 ? static_cast<std::size_t>(pending) : 0);
    refresh_derived_facts(context);
}

void clear_versions(const Context& context) {
    const std::string& panels = context->project_configurator.panels;
    context->project.version_rows.clear();
    context->project.looking_for_versions = false;
    publish_rows(context);
    context->app.set_visible(panels + STATUS_MESSAGE, false);
    set_pending_count(*context, 0);
}

} // namespace

void refresh_versions(const Context& context) {
    ProjectState& state = context->project;
    const std::uint32_t generation = ++state.versions_generation;
    const std::string path = context->edits.path;
    if (path.empty() || active_config(*context).kind != ConfigKind::Project) {
        clear_versions(context);
        return;
    }
    if (!context->app.process)
        return;
    show_looking(context, path);
    // An earlier answer is not wanted any more.
    if (const auto end_query = std::exchange(context->edits.end_query, nullptr))
        end_query();
    const auto listing = std::make_shared<VersionListing>();
    context->edits.end_query = context->app.process(
        {BUILDER, "versions", path, "--porcelain"},
        [listing](const std::string& line) { listing->add_line(without_colours(line)); },
        [context, listing, generation, path](int code) {
            // The user may have moved on while the builder was looking.
            if (generation == context->project.versions_generation && path == context->edits.path)
                take_listing(context, std::move(*listing), code);
        });
}

void fill_versions_panel(const Context& context, const Json&) {
    refresh_versions(context);
}

} // namespace Lumenfold
