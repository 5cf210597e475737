#include "app/site_panels/website_panel.h"

#include "app/site_panels/add_section_dialog.h"
#include "app/site_panels/edit_section_dialog.h"
#include "app/site_panels/favicon_picker.h"
#include "app/site_panels/home_sections.h"
#include "app/site_panels/logo_picker.h"
#include "app/site_panels/tab_preview.h"
#include "app/site_panels/website_fields.h"

namespace Lumenfold {

void wire_website_panel(const Context& context) {
    wire_website_fields(context);
    wire_logo_picker(context);
    wire_favicon_picker(context);
    wire_home_sections(context);
    wire_edit_section_dialog(context);
    wire_add_section_dialog(context);
}

void fill_website_panel(const Context& context, const Json& site) {
    fill_website_fields(context, site);
    fill_logo_picker(context, site);
    fill_favicon_picker(context, site);
    update_tab_preview(context);
    fill_home_sections(context, site);
}

} // namespace Lumenfold
