#include "screens/settings_menu.h"

#include "runtime/corvel_app.h"
#include "screens/update_section.h"

namespace Corvel {
namespace {

constexpr const char* SELECTED = "Selected";
constexpr const char* THEME_DOCUMENTATION =
    "https://orrinworkshop.example/corvel/docs/custom-themes";

void wire_theme_directories(CorvelApp& app, const std::string& root, const std::string& menu) {
    const std::string appearance = menu + "/Appearance Settings";
    const std::string dialog = root + "/Theme Directories Dialog";
    const std::string source_list = dialog + "/Body/Source List";
    const std::string empty_state = dialog + "/Body/Empty State";

    // The appearance page has this one tab.
    app.add_state(appearance + "/Appearance Tabs/Theme Tab", SELECTED);
    app.set_visible(dialog, false);
    app.on_click(appearance + "/Theme Bar/Manage Theme Directories Button",
                 [&app, dialog] { app.set_visible(dialog, true); });
    app.on_click(dialog + "/Titlebar/Exit Button",
                 [&app, dialog] { app.set_visible(dialog, false); });
    app.set_visible(source_list, false);
    app.on_click(empty_state + "/Learn More Button", [&app] {
        if (app.open_url)
            app.open_url(THEME_DOCUMENTATION);
    });
    app.on_rows("themeSources",
                [&app, source_list, empty_state](const std::vector<ListEntry>& rows) {
                    app.set_visible(source_list, !rows.empty());
                    app.set_visible(empty_state, rows.empty());
                });
}

/// Makes tabs that are selected by a click, with the first one selected.
std::shared_ptr<WindowTabs> make_tabs(CorvelApp& app, const std::string& bar,
                                      const std::string& panels, const TabNames& own,
                                      const TabNames& extra) {
    const auto tabs = std::make_shared<WindowTabs>(app);
    for (const TabNames* names : {&own, &extra})
        for (const auto& [tab, panel] : *names) {
            const std::string path = bar + "/" + tab;
            tabs->add(path, panels + "/" + panel, SELECTED);
            app.on_click(path, [tabs, path] { tabs->select(path); });
        }
    tabs->select(bar + "/" + own.front().first);
    return tabs;
}

} // namespace

std::shared_ptr<WindowTabs> install_settings_menu(CorvelApp& app, const std::string& root,
                                                  const std::string& window,
                                                  const TabNames& extra_menu_tabs,
                                                  const TabNames& extra_window_tabs) {
    const std::string base = root + "/" + window;
    const std::string menu = base + "/Settings Menu";
    wire_theme_directories(app, root, menu);
    install_update_section(app, root, window);
    make_tabs(app, menu + "/Sidebar", menu,
              {{"App Tab", "App Settings"}, {"Appearance Tab", "Appearance Settings"}},
              extra_menu_tabs);
    return make_tabs(app, base + "/Titlebar/Right Tabs", base,
                     {{"App Tab", "App Pane"}, {"Settings Tab", "Settings Menu"}},
                     extra_window_tabs);
}

} // namespace Corvel
