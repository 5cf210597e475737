#include "app/builds/project_build_panel.h"

#include "app/app_context.h"
#include "app/builds/build_run.h"
#include "app/builds/build_state.h"
#include "app/builds/versions_panel.h"
#include "app/editing/edit_queue.h"
#include "app/projects/project_state.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"

namespace Lumenfold {
namespace {

constexpr const char* PANEL = "/Build Panel";
constexpr const char* ADVANCED_CHECKBOX = "/Advanced Row/Advanced Checkbox";
constexpr const char* BUSY_ICON = "/Advanced Row/Busy Icon";
constexpr const char* OUTPUT_EDITOR = "/Output Editor";
constexpr const char* BUILD_BUTTON = "/Build Button";
constexpr const char* OUTPUT_BUTTON = "/Output Button";

void build_project(const Context& context, const std::string& panel) {
    ProjectState& state = *context->project;
    if (build_blocked(*context) || context->edits.path.empty() || state.pending_count == 0)
        return;
    // The builder must see the edits of the last half second.
    flush_edits(context);
    context->app.add_state(panel + BUILD_BUTTON, "Disabled");

    BuildRun run;
    run.config_path = context->edits.path;
    run.arguments = {"build", run.config_path, "--porcelain"};
    run.log_prefix = "[Build]";
    run.output_editor = panel + OUTPUT_EDITOR;
    run.advanced_checkbox = panel + ADVANCED_CHECKBOX;
    run.busy_icon = panel + BUSY_ICON;
    run.log = &state.log;
    run.finished = [context] {
        refresh_pending_count(*context);
        refresh_versions(context);
    };
    start_build(context, std::move(run));
}

} // namespace

void wire_project_build_panel(const Context& context) {
    const std::string panel = context->project_shell.panels + PANEL;
    context->app.set_visible(panel + BUSY_ICON, false);
    context->app.on_click(panel + BUILD_BUTTON,
                          [context, panel] { build_project(context, panel); });
    context->app.on_click(panel + OUTPUT_BUTTON, [context] {
        if (!context->edits.path.empty())
            open_folder(*context, path_to_utf8(path_from_utf8(context->edits.path).parent_path() /
                                               "versions"));
    });
}

} // namespace Lumenfold
