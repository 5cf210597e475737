#include "app/project_panels/project_build_panel.h"

#include "app/builder/build_run.h"
#include "app/context/app_context.h"
#include "app/context/build_state.h"
#include "app/context/project_state.h"
#include "app/editing/edit_queue.h"
#include "app/project_panels/versions_panel.h"
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
    ProjectState& state = context->project;
    if (build_blocked(*context) || !anything_is_open(*context) || state.pending_count == 0)
        return;
    // The builder must see the edits of the last half second.
    flush_edits(context);

    BuildRun run;
    run.config_path = context->edits.path;
    run.arguments = {"build", run.config_path, "--porcelain"};
    run.log_prefix = "[Build]";
    run.output_editor = panel + OUTPUT_EDITOR;
    run.advanced_checkbox = panel + ADVANCED_CHECKBOX;
    run.busy_icon = panel + BUSY_ICON;
    run.has_output = &state.build_has_output;
    run.finished = [context] { refresh_versions(context); };
    start_build(context, std::move(run));
}

} // namespace

void wire_project_build_panel(const Context& context) {
    const std::string panel = context->project_configurator.panels + PANEL;
    context->app.set_visible(panel + BUSY_ICON, false);
    context->app.on_click(panel + BUILD_BUTTON,
                          [context, panel] { build_project(context, panel); });
    context->app.on_click(panel + OUTPUT_BUTTON, [context] {
        if (anything_is_open(*context))
            open_folder(*context, path_to_utf8(path_from_utf8(context->edits.path).parent_path() /
                                               "versions"));
    });
}

} // namespace Lumenfold
