#include "app/panels/website_panel.h"

#include "app/app_context.h"
#include "app/editing/text_view.h"
#include "app/json_view.h"
#include "app/panels/favicon_picker.h"
#include "app/panels/home_sections.h"
#include "app/panels/logo_picker.h"
#include "app/panels/policies_panel.h"
#include "app/panels/project_cards.h"
#include "app/panels/site_state.h"
#include "app/panels/social_cards.h"
#include "app/panels/tab_preview.h"
#include "app/panels/website_fields.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {

void wire_website_form(const Context& context) {
    context->site = std::make_shared<SiteState>();
    wire_website_fields(context);
}

void wire_site_images(const Context& context) {
    wire_logo_picker(context);
    wire_favicon_picker(context);
    context->site_shell.reload = [](const Context& later) {
        fill_site_panels(later, later->active);
    };
}

void fill_site_panels(const Context& context, const OpenConfig& config) {
    const std::string text = read_text_file(path_from_utf8(config.path)).value_or(std::string());
    // A file that does not parse comes up with empty fields, for repair in the text view.
    const Json site = parse_or_empty(text);
    start_editing(context, config.path, text);
    fill_website_fields(context, site);
    fill_logo_picker(context, site);
    fill_favicon_picker(context, site);
    update_tab_preview(context);
    fill_project_cards(context, site);
    fill_social_cards(context, site);
    fill_home_sections(context, site);
    fill_policies_panel(context, site);
}

} // namespace Lumenfold
