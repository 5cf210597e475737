#include "app/tabs/section_tabs.h"

#include "app/context/app_context.h"
#include "runtime/corvel_app.h"

namespace Lumenfold {

void show_tab(const Context& context, Shell& configurator, const std::string& tab) {
    if (tab == configurator.active_tab)
        return;
    Corvel::CorvelApp& app = context->app;
    if (!configurator.active_tab.empty())
        app.remove_state(configurator.sidebar + "/" + configurator.active_tab, "Active");
    app.add_state(configurator.sidebar + "/" + tab, "Active");
    configurator.active_tab = tab;
    for (const Section& row : configurator.sections)
        app.set_visible(configurator.panels + "/" + row.panel, row.tab == tab);
}

void wire_section_tabs(const Context& context, Shell& configurator) {
    for (const Section& row : configurator.sections)
        context->app.on_click(configurator.sidebar + "/" + row.tab,
                              [context, &configurator, tab = std::string(row.tab)] {
                                  show_tab(context, configurator, tab);
                              });
    show_tab(context, configurator, configurator.sections.front().tab);
}

} // namespace Lumenfold
