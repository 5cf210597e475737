#include "app/shell/tabs.h"

#include "app/app_context.h"
#include "app/later.h"
#include "app/shell/leave_guard.h"
#include "app/shell/opening.h"
#include "app/shell/window_paths.h"
#include "runtime/corvel_app.h"
#include "runtime/window_tabs.h"

#include <algorithm>

namespace Lumenfold {

namespace {

const std::string LEFT_TABS_LIST = "leftTabs";
const std::string ACTIVE = "Active";

std::string tab_icon(const OpenConfig& config) {
    if (config.kind == ConfigKind::Site)
        return "site";
    return config.members.size() < 2 ? "project" : "project-family";
}

void activate(const Context& context, const std::string& id) {
    if (id == context->active.id) {
        context->tabs->select(left_tab_path(id));
        return;
    }
    const auto found = std::find_if(context->open_configs.begin(), context->open_configs.end(),
                                    [&](const OpenConfig& config) { return config.id == id; });
    if (found == context->open_configs.end())
        return;
    leave_guard(context, [config = *found](const Context& later) {
        load_config(later, config);
        later->tabs->select(left_tab_path(config.id));
    });
}

} // namespace

std::string left_tab_path(const std::string& id) {
    return Paths::LEFT_TABS + "/" + id;
}

void refresh_left_tabs(const Context& context) {
    std::vector<Corvel::ListEntry> rows;
    for (const OpenConfig& config : context->open_configs) {
        Corvel::ListEntry row{config.id, {{"title", config.title}, {"icon", tab_icon(config)}}};
        if (!config.logo.empty())
            row.fields["logo"] = config.logo;
        rows.push_back(std::move(row));
    }
    context->app.set_rows(LEFT_TABS_LIST, std::move(rows));
}

void set_tab_logo(const Context& context, const std::string& logo, bool reread) {
    OpenConfig* tab = active_tab_record(*context);
    if (!tab)
        return;
    context->active.logo = logo;
    if (reread && context->app.run_after) {
        tab->logo.clear();
        refresh_left_tabs(context);
        context->app.run_after(REREAD_DELAY_MS, [context] { refresh_left_tabs(context); });
    }
    tab->logo = logo;
    if (!reread)
        refresh_left_tabs(context);
}

void wire_left_tabs(const Context& context) {
    context->app.on_row_click(LEFT_TABS_LIST, [context](const std::string&, const std::string& id,
                                                        const std::string& action) {
        if (action == "activate")
            activate(context, id);
        else if (action == "close")
            close_config(context, id);
    });
}

void show_tab(const Context& context, Shell& shell, const std::string& tab) {
    if (tab == shell.active_tab)
        return;
    Corvel::CorvelApp& app = context->app;
    if (!shell.active_tab.empty())
        app.remove_state(shell.sidebar + "/" + shell.active_tab, ACTIVE);
    app.add_state(shell.sidebar + "/" + tab, ACTIVE);
    shell.active_tab = tab;
    for (const SectionTab& row : shell.tabs)
        app.set_visible(shell.panels + "/" + row.panel, row.tab == tab);
}

void wire_section_tabs(const Context& context, Shell& shell) {
    for (const SectionTab& row : shell.tabs)
        context->app.on_click(shell.sidebar + "/" + row.tab,
                              [context, &shell, tab = row.tab] { show_tab(context, shell, tab); });
    show_tab(context, shell, shell.tabs.front().tab);
}

} // namespace Lumenfold
