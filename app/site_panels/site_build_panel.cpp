#include "app/site_panels/site_build_panel.h"

#include "app/builder/build_run.h"
#include "app/context/app_context.h"
#include "app/context/build_state.h"
#include "app/editing/edit_queue.h"
#include "runtime/corvel_app.h"

namespace Lumenfold {
namespace {

constexpr const char* PANEL = "/Build Panel";
constexpr const char* ADVANCED_CHECKBOX = "/Advanced Row/Advanced Checkbox";
constexpr const char* BUSY_ICON = "/Advanced Row/Busy Icon";
constexpr const char* OUTPUT_EDITOR = "/Output Editor";
constexpr const char* BUILD_BUTTON = "/Actions Row/Build Button";
constexpr const char* OUTPUT_BUTTON = "/Actions Row/Output Button";

void build_site(const Context& context, const std::string& panel) {
    if (build_blocked(*context) || !site_is_open(*context))
        return;
    // The builder must see the edits of the last half second.
    flush_edits(context);
    context->build.output.clear();

    BuildRun run;
    run.config_path = active_config(*context).path;
    run.arguments = {"site", "build", run.config_path, "--porcelain"};
    run.log_prefix = "[Site]";
    run.output_editor = panel + OUTPUT_EDITOR;
    run.advanced_checkbox = panel + ADVANCED_CHECKBOX;
    run.busy_icon = panel + BUSY_ICON;
    run.has_output = &context->build.has_output;
    run.own_tag = [context](char tag, std::string_view text) {
        if (tag != 'O')
            return false;
        context->build.output = text;
        return true;
    };
    run.finished = [] {};
    start_build(context, std::move(run));
}

} // namespace

void wire_site_build_panel(const Context& context) {
    const std::string panel = context->site_configurator.panels + PANEL;
    context->app.set_visible(panel + BUSY_ICON, false);
    context->app.on_click(panel + BUILD_BUTTON, [context, panel] { build_site(context, panel); });
    context->app.on_click(panel + OUTPUT_BUTTON,
                          [context] { open_folder(*context, context->build.output); });
}

} // namespace Lumenfold
