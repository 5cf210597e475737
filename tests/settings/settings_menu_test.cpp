#include "runtime/app_fixture.h"
#include "runtime/settings/settings_menu.h"
#include "support/fake_platform.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

const std::string screens = R"(App:
    Main:
        Titlebar/Right Tabs/(App, Settings, Help) Tab << Corvel/Button
        App Pane
        Help Pane
        Settings Menu:
            Sidebar/(App, Appearance, More) Tab << Corvel/Button
            App Settings
            More Settings
            Appearance Settings:
                Appearance Tabs/Theme Tab
                Theme Bar/Manage Theme Directories Button << Corvel/Button
    Theme Directories Dialog:
        Titlebar/Exit Button << Corvel/Button
        Body:
            Source List
            Empty State/Learn More Button << Corvel/Button
    (a, b, s)
    (A, B)
)";

const std::string window = "App/Main";
const std::string menu = window + "/Settings Menu";
const std::string dialog = "App/Theme Directories Dialog";

class SettingsMenuTest : public testing::Test {
protected:
    SettingsMenuTest() {
        tabs = install_settings_menu(app.app, "App", "Main", {{"More Tab", "More Settings"}},
                                     {{"Help Tab", "Help Pane"}});
    }

    void click(const std::string& path) { app->dispatch_event(path, "click"); }

    std::string shown(const std::string& parent, const std::vector<std::string>& names) {
        std::string found;
        for (const std::string& name : names)
            if (app.shows(parent + "/" + name))
                found += name + ";";
        return found;
    }
    std::string panes() { return shown(window, {"App Pane", "Settings Menu", "Help Pane"}); }
    std::string pages() {
        return shown(menu, {"App Settings", "Appearance Settings", "More Settings"});
    }

    TestSupport::TestApp app{screens};
    TestSupport::FakePlatform platform{app.app};
    std::shared_ptr<WindowTabs> tabs;
};

TEST_F(SettingsMenuTest, TabsSwitchPanesAndPages) {
    EXPECT_EQ(panes(), "App Pane;");
    EXPECT_TRUE(app->has_state(window + "/Titlebar/Right Tabs/App Tab", "Selected"));
    EXPECT_TRUE(
        app->has_state(menu + "/Appearance Settings/Appearance Tabs/Theme Tab", "Selected"));
    click(window + "/Titlebar/Right Tabs/Settings Tab");
    EXPECT_EQ(panes(), "Settings Menu;");
    EXPECT_EQ(pages(), "App Settings;");
    click(menu + "/Sidebar/Appearance Tab");
    EXPECT_EQ(pages(), "Appearance Settings;");
    click(menu + "/Sidebar/More Tab");
    EXPECT_EQ(pages(), "More Settings;");
    EXPECT_TRUE(app->has_state(menu + "/Sidebar/More Tab", "Selected"));
    EXPECT_FALSE(app->has_state(menu + "/Sidebar/Appearance Tab", "Selected"));
    click(window + "/Titlebar/Right Tabs/Help Tab");
    EXPECT_EQ(panes(), "Help Pane;");
    EXPECT_EQ(tabs->previous, window + "/Titlebar/Right Tabs/Settings Tab");
}

TEST_F(SettingsMenuTest, TheDirectoriesDialogOpensAndCloses) {
    EXPECT_FALSE(app.shows(dialog));
    click(menu + "/Appearance Settings/Theme Bar/Manage Theme Directories Button");
    EXPECT_EQ(shown(dialog + "/Body", {"Source List", "Empty State"}), "Empty State;");
    app->set_rows("themeSources", {{"dir:/a", {}}});
    EXPECT_EQ(shown(dialog + "/Body", {"Source List", "Empty State"}), "Source List;");
    app->set_rows("themeSources", {});
    click(dialog + "/Body/Empty State/Learn More Button");
    EXPECT_EQ(platform.opened_urls,
              std::vector<std::string>{"https://orrinworkshop.example/corvel/docs/custom-themes"});
    app->open_url = {};
    click(dialog + "/Body/Empty State/Learn More Button");
    click(dialog + "/Titlebar/Exit Button");
    EXPECT_FALSE(app.shows(dialog));
}

/// Tabs "a" with panel "A", "b" with "B", and "s" that shares "A".
TEST_F(SettingsMenuTest, WindowTabsMayShareAPanelAndGo) {
    WindowTabs own(app.app);
    own.add("App/a", "App/A", "On");
    own.add("App/b", "App/B", "On");
    own.add("App/s", "App/A", "Lit");
    const auto after = [&](const std::string& tab) {
        own.select(tab);
        std::string state;
        for (const auto& [name, lit] : {std::pair("a", "On"), {"b", "On"}, {"s", "Lit"}})
            if (app->has_state(std::string("App/") + name, lit))
                state += name;
        return state + " " + shown("App", {"A", "B"});
    };
    EXPECT_EQ(after("App/a"), "a A;");
    EXPECT_EQ(after("App/b"), "b B;");
    EXPECT_EQ(after("App/b"), "b B;");
    EXPECT_EQ(own.previous, "App/a");
    EXPECT_EQ(after("App/none"), "b B;");
    EXPECT_EQ(after(own.previous), "a A;");
    EXPECT_EQ(own.previous, "App/b");
    EXPECT_EQ(after("App/s"), "s A;");
    EXPECT_FALSE(own.remove("App/a"));
    EXPECT_EQ(after(""), "s A;");
    EXPECT_TRUE(own.remove("App/s"));
    EXPECT_EQ(own.active, "");
    EXPECT_EQ(after(""), " ");
    own.add("App/b", "App/A", "Lit"); // a known tab is updated
    EXPECT_EQ(own.entries.size(), 1u);
    own.select("App/b");
    EXPECT_TRUE(app->has_state("App/b", "Lit"));
}

} // namespace
} // namespace Corvel
