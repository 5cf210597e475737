#include "screens/settings_menu.h"
#include "support/app_story.h"

namespace Corvel {
namespace {

class SettingsMenuStory : public TestSupport::AppStory {
public:
    SettingsMenuStory()
        : AppStory(TestSupport::read_file(SOURCE_ROOT "/tests/screens/cases/screens.lyr")) {
        tabs = install_settings_menu(app.app, "App", "Main", {{"More Tab", "More Settings"}},
                                     {{"Help Tab", "Help Pane"}});
        verbs["children"] = [this](auto& path) { return app.children(path); };
        verbs["previous"] = [this](auto&) { return tabs->previous; };
        verbs["rows"] = act([this](auto& ids) { // of the theme directories
            app->set_rows("themeSources", ids.empty() ? std::vector<ListEntry>()
                                                      : std::vector<ListEntry>{{ids, {}}});
        });
        // Tabs beside those of the window: "add TAB PANEL STATE", each below "App".
        verbs["add"] = act([this](auto& what) {
            std::istringstream words(what);
            std::string tab, panel, state;
            words >> tab >> panel >> state;
            own.add("App/" + tab, "App/" + panel, state);
        });
        verbs["select"] = [this](auto& tab) { // answers the tabs and the panels that are on
            own.select(tab.empty() ? "" : tab == "previous" ? own.previous : "App/" + tab);
            std::string on;
            for (const auto& [name, lit] : {std::pair("a", "On"), {"b", "On"}, {"s", "Lit"}})
                if (app->has_state(std::string("App/") + name, lit))
                    on += name;
            for (const char* name : {"A", "B"})
                if (app.shows(std::string("App/") + name))
                    on += name;
            return on;
        };
        verbs["remove"] = [this](auto& tab) { return yes(own.remove("App/" + tab)); };
        verbs["own"] = [this](auto&) { // the tabs that are left and those selected now and before
            return std::to_string(own.entries.size()) + "|" + own.active + "|" + own.previous;
        };
    }

    std::shared_ptr<WindowTabs> tabs;
    WindowTabs own{app.app};
};

[[maybe_unused]] const bool registered = TestSupport::register_stories<SettingsMenuStory>(
    "SettingsMenu", "tests/screens/cases/menu.txt");

} // namespace
} // namespace Corvel
