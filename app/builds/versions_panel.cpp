#include "app/builds/versions_panel.h"

#include "app/app_context.h"
#include "app/builds/build_state.h"
#include "app/builds/porcelain.h"
#include "app/builds/version_inclusion.h"
#include "app/node_state.h"
#include "app/projects/project_state.h"
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
constexpr const char* BUILD_BUTTON = "/Build Panel/Build Button";
constexpr const char* NOT_RUN = "lumenfold-cli did not run (expected beside this executable).";
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
    const std::string& panels = context->project_shell.panels;
    const std::vector<VersionRowUi>& versions = context->project->version_rows;
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
        set_state(app, row, "Excluded", versions[i].status == "excluded");
    }
}

void show_messages(const Context& context, const std::vector<std::string>& messages) {
    std::string text;
    for (const std::string& message : messages)
        text += (text.empty() ? "" : "\n") + message;
    if (context->project->version_rows.empty() && messages.empty())
        text = NO_VERSIONS;
    const std::string path = context->project_shell.panels + STATUS_MESSAGE;
    context->app.set_text(path, text);
    context->app.set_visible(path, !text.empty());
}

/// While the builder looks, an empty panel says so; a filled one keeps its table, unless that is
/// another project's.
void show_looking(const Context& context, const std::string& path) {
    ProjectState& state = *context->project;
    if (state.versions_path != path) {
        state.versions_path = path;
        state.version_rows.clear();
        set_pending_count(*context, 0);
    }
    if (!state.version_rows.empty())
        return;
    publish_rows(context);
    const std::string& panels = context->project_shell.panels;
    context->app.set_visible(panels + STATUS_MESSAGE, false);
    context->app.set_visible(panels + BUSY_ICON, true);
}

void take_listing(const Context& context, VersionListing listing, int code) {
    if (code == -1 || code == -2)
        listing.messages.push_back(NOT_RUN);
    ProjectState& state = *context->project;
    state.version_rows = std::move(listing.rows);
    publish_rows(context);
    show_messages(context, listing.messages);
    const auto pending =
        std::count_if(state.version_rows.begin(), state.version_rows.end(),
                      [](const VersionRowUi& row) { return row.status == "pending"; });
    set_pending_count(*context, code == 0 ? static_cast<std::size_t>(pending) : 0);
}

void clear_versions(const Context& context) {
    const std::string& panels = context->project_shell.panels;
    context->project->version_rows.clear();
    publish_rows(context);
    context->app.set_visible(panels + STATUS_MESSAGE, false);
    set_pending_count(*context, 0);
}

} // namespace

void refresh_versions(const Context& context) {
    ProjectState& state = *context->project;
    const std::uint32_t generation = ++state.versions_generation;
    const std::string path = context->edits.path;
    if (path.empty() || context->active.kind != ConfigKind::Project) {
        clear_versions(context);
        return;
    }
    if (!context->app.process)
        return;
    show_looking(context, path);
    const auto listing = std::make_shared<VersionListing>();
    context->app.process(
        {"lumenfold-cli", "versions", path, "--porcelain"},
        [listing](const std::string& line) { listing->add_line(line); },
        [context, listing, generation, path](int code) {
            // The user may have moved on while the builder was looking.
            if (generation == context->project->versions_generation && path == context->edits.path)
                take_listing(context, std::move(*listing), code);
        });
}

void set_pending_count(AppContext& context, std::size_t count) {
    context.project->pending_count = count;
    const std::string button = context.project_shell.panels + BUILD_BUTTON;
    context.app.set_text(button + "/Label", count > 0
                                                ? "Build " + std::to_string(count) + " Pending"
                                                : std::string("Nothing Pending"));
    set_state(context.app, button, "Disabled", count == 0 || context.build->running);
}

void refresh_pending_count(AppContext& context) {
    set_pending_count(context, context.project->pending_count);
}

} // namespace Lumenfold
