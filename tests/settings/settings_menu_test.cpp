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

    std::string shown(const std::vector<std::string>& paths) {
        const RenderNode tree = app->build_render_tree();
        std::string names;
        for (const std::string& path : paths)
            if (TestSupport::find_node(tree, path) != nullptr)
                names += path.substr(path.rfind('/') + 1) + ";";
        return names;
    }

    std::string panes() { return shown({window + "/App Pane", menu, window + "/Help Pane"}); }

    std::string pages() {
        return shown(
            {menu + "/App Settings", menu + "/Appearance Settings", menu + "/More Settings"});
    }

    TestSupport::TestApp app{screens};
    TestSupport::FakePlatform platform{app.app};
    std::shared_ptr<WindowTabs> tabs;
};

TEST_F(SettingsMenuTest, StartsWithTheApplication) {
    EXPECT_EQ(panes(), "App Pane;");
    EXPECT_EQ(tabs->active, window + "/Titlebar/Right Tabs/App Tab");
    EXPECT_TRUE(app->has_state(tabs->active, "Selected"));
    EXPECT_TRUE(
        app->has_state(menu + "/Appearance Settings/Appearance Tabs/Theme Tab", "Selected"));
    EXPECT_EQ(shown({dialog}), "");
}

TEST_F(SettingsMenuTest, TabsSwitchPanesAndPages) {
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
    click(menu + "/Appearance Settings/Theme Bar/Manage Theme Directories Button");
    EXPECT_NE(shown({dialog}), "");
    const std::vector<std::string> bodies{dialog + "/Body/Source List",
                                          dialog + "/Body/Empty State"};
    EXPECT_EQ(shown(bodies), "Empty State;");
    app->set_rows("themeSources", {{"dir:/a", {}}});
    EXPECT_EQ(shown(bodies), "Source List;");
    app->set_rows("themeSources", {});
    EXPECT_EQ(shown(bodies), "Empty State;");
    click(dialog + "/Titlebar/Exit Button");
    EXPECT_EQ(shown({dialog}), "");
}

TEST_F(SettingsMenuTest, LearnMoreOpensTheDocumentation) {
    click(dialog + "/Body/Empty State/Learn More Button");
    EXPECT_EQ(platform.opened_urls,
              std::vector<std::string>{"https://orrinworkshop.example/corvel/docs/custom-themes"});
    app->open_url = {};
    click(dialog + "/Body/Empty State/Learn More Button");
}

} // namespace
} // namespace Corvel
