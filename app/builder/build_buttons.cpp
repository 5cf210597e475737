#include "app/builder/build_buttons.h"

#include "app/context/app_context.h"
#include "runtime/corvel_app.h"

#include <string>

namespace Lumenfold {

namespace {

constexpr const char* SITE_BUTTON = "/Build Panel/Actions Row/Build Button";
constexpr const char* PROJECT_BUTTON = "/Build Panel/Build Button";

std::string project_button_label(const ProjectState& project) {
    if (project.pending_count > 0)
        return "Build " + std::to_string(project.pending_count) + " Pending";
    return project.looking_for_versions ? "Looking for versions…" : "Nothing Pending";
}

} // namespace

void refresh_build_buttons(AppContext& context) {
    const bool running = context.build.running;
    const std::string project = context.project_configurator.panels + PROJECT_BUTTON;
    context.app.set_text(project + "/Label", project_button_label(context.project));
    context.app.set_state(project, "Disabled", running || context.project.pending_count == 0);
    context.app.set_state(context.site_configurator.panels + SITE_BUTTON, "Disabled", running);
}

void set_pending_count(AppContext& context, std::size_t count) {
    context.project.pending_count = count;
    refresh_build_buttons(context);
}

} // namespace Lumenfold
