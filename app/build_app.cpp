#include "app/app_context.h"
#include "app/builds/site_build_panel.h"
#include "app/editing/text_view.h"
#include "app/editing/view_switch.h"
#include "app/panels/home_sections.h"
#include "app/panels/policies_panel.h"
#include "app/panels/project_cards.h"
#include "app/panels/social_cards.h"
#include "app/panels/website_panel.h"
#include "app/projects/family_bar.h"
#include "app/projects/project_panels.h"
#include "app/shell/dev_open.h"
#include "app/shell/home_screen.h"
#include "app/shell/main_window.h"
#include "app/shell/tabs.h"
#include "runtime/desktop_app.h"

/// The table of contents of the application. The order counts: a file editor wired earlier is
/// asked about earlier, and a registration replaces an earlier one of its node.
void Corvel::build_app(CorvelApp& app) {
    using namespace Lumenfold;

    const Context context = open_main_window(app);
    wire_message_dialog(context);
    wire_confirm_dialog(context);
    wire_section_tabs(context, context->site_shell);
    wire_section_tabs(context, context->project_shell);

    wire_website_form(context);
    wire_policies_panel(context);
    wire_site_images(context);

    for (Shell* shell : {&context->site_shell, &context->project_shell}) {
        wire_text_view(context, *shell);
        wire_view_tabs(context, *shell);
    }

    wire_site_build_panel(context);
    wire_project_panels(context);

    wire_left_tabs(context);
    wire_project_cards(context);
    wire_family_tabs(context);
    wire_orphan_rows(context);
    wire_social_cards(context);
    wire_edit_section_dialog(context);
    wire_add_section_dialog(context);
    wire_home_sections(context);
    wire_add_social_dialog(context);
    wire_add_project_dialog(context);
    wire_promote_dialog(context);
    wire_home_screen(context);

    open_from_environment(context);
}
