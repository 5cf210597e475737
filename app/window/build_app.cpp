#include "app/context/app_context.h"
#include "app/editing/text_view.h"
#include "app/project_panels/add_project_dialog.h"
#include "app/project_panels/family_bar.h"
#include "app/tabs/left_tabs.h"
#include "app/tabs/section_tabs.h"
#include "app/tabs/view_switch.h"
#include "app/window/dev_open.h"
#include "app/window/home_screen.h"
#include "app/window/main_window.h"
#include "runtime/desktop_app.h"

namespace {

using namespace Lumenfold;

void wire_configurator(const Context& context, Shell& configurator) {
    for (const Section& section : configurator.sections)
        if (section.wire)
            section.wire(context);
    wire_section_tabs(context, configurator);
    wire_text_view(context, configurator);
    wire_view_tabs(context, configurator);
}

} // namespace

/// The table of contents of the application; the sections of the two configurators stand in tables
/// of their own.
void Corvel::build_app(CorvelApp& app) {
    const Context context = open_main_window(app);
    wire_message_dialog(context);
    wire_confirm_dialog(context);
    wire_configurator(context, context->site_configurator);
    wire_configurator(context, context->project_configurator);
    wire_left_tabs(context);
    wire_family_tabs(context);
    wire_add_project_dialog(context);
    wire_home_screen(context);
    open_named_files(context);
}
