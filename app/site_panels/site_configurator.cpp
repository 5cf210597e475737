#include "app/site_panels/site_configurator.h"

#include "app/context/app_context.h"
#include "app/context/window_paths.h"
#include "app/editing/text_view.h"
#include "app/site_panels/policies_panel.h"
#include "app/site_panels/project_cards.h"
#include "app/site_panels/site_build_panel.h"
#include "app/site_panels/social_cards.h"
#include "app/site_panels/website_panel.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {

namespace {

// clang-format off
constexpr Section SECTIONS[] = {
    {"Website Tab",  "Website Panel",  wire_website_panel,    fill_website_panel},
    {"Projects Tab", "Projects Panel", wire_project_cards,    fill_project_cards},
    {"Socials Tab",  "Socials Panel",  wire_social_cards,     fill_social_cards},
    {"Policies Tab", "Policies Panel", wire_policies_panel,   fill_policies_panel},
    {"Build Tab",    "Build Panel",    wire_site_build_panel, nullptr},
};
// clang-format on

void fill_site_panels(const Context& context) {
    // A file that does not parse comes up with empty fields, for repair in the text view.
    const Json site = start_editing(context, active_config(*context).path);
    for (const Section& section : SECTIONS)
        if (section.fill)
            section.fill(context, site);
}

FileEditor& policy_editor(AppContext& context) {
    return context.site.policies.editor;
}

FileEditor& section_editor(AppContext& context) {
    return context.site.section_editor;
}

} // namespace

ConfiguratorParts site_configurator_parts() {
    return {
        .root = Paths::SITE_CONFIGURATOR,
        .sections = SECTIONS,
        .guards = {{"Policies editor", policy_editor}, {"Section content editor", section_editor}},
        .reload = fill_site_panels};
}

} // namespace Lumenfold
