#include "runtime/app_fixture.h"
#include "runtime/window_tabs.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

/// Tabs "a" with panel "A", "b" with "B", and "s" that shares "A".
class WindowTabsTest : public testing::Test {
protected:
    WindowTabsTest() {
        tabs.add("App/a", "App/A", "On");
        tabs.add("App/b", "App/B", "On");
        tabs.add("App/s", "App/A", "Lit");
    }

    /// The tabs with their state, then the panels on screen.
    std::string state() {
        std::string text;
        for (const auto& [path, lit] :
             {std::pair("App/a", "On"), {"App/b", "On"}, {"App/s", "Lit"}})
            if (app->has_state(path, lit))
                text += path[4];
        text += ' ';
        const RenderNode tree = app->build_render_tree();
        for (const char* panel : {"App/A", "App/B"})
            if (TestSupport::find_node(tree, panel) != nullptr)
                text += panel[4];
        return text;
    }

    TestSupport::TestApp app{"App:\n  (a, b, s)\n  (A, B)\n"};
    WindowTabs tabs{app.app};
};

TEST_F(WindowTabsTest, SelectSwitchesStateAndPanel) {
    tabs.select("App/a");
    EXPECT_EQ(state(), "a A");
    tabs.select("App/b");
    EXPECT_EQ(state(), "b B");
    EXPECT_EQ(tabs.previous, "App/a");
    tabs.select("App/b");
    tabs.select("App/none");
    EXPECT_EQ(state(), "b B");
    EXPECT_EQ(tabs.previous, "App/a");
    tabs.select(tabs.previous);
    EXPECT_EQ(tabs.active, "App/a");
    EXPECT_EQ(tabs.previous, "App/b");
}

TEST_F(WindowTabsTest, ASharedPanelStays) {
    tabs.select("App/a");
    tabs.select("App/s");
    EXPECT_EQ(state(), "s A");
    EXPECT_FALSE(tabs.remove("App/a"));
    EXPECT_EQ(state(), "s A");
}

TEST_F(WindowTabsTest, RemovingTheSelectedTabLeavesNone) {
    tabs.select("App/b");
    EXPECT_TRUE(tabs.remove("App/b"));
    EXPECT_EQ(state(), " ");
    EXPECT_EQ(tabs.active, "");
    EXPECT_FALSE(tabs.remove("App/b"));
    tabs.select("App/a");
    EXPECT_EQ(state(), "a A");
    EXPECT_TRUE(tabs.remove("App/a")); // hides the panel although another tab has it
    EXPECT_EQ(state(), " ");
}

TEST_F(WindowTabsTest, AddingAKnownTabUpdatesIt) {
    tabs.add("App/b", "App/A", "Lit");
    EXPECT_EQ(tabs.entries.size(), 3u);
    tabs.select("App/b");
    EXPECT_EQ(state(), " AB"); // no tab has the panel B any more
    EXPECT_TRUE(app->has_state("App/b", "Lit"));
}

} // namespace
} // namespace Corvel
