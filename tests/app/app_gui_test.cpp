#include "app_window.h"
#include "story_player.h"

#include <gtest/gtest.h>

#include <QPoint>
#include <QWidget>

namespace TestSupport {
namespace {

struct RealWindow : testing::Test {
    AppWindow ui;
};

TEST_F(RealWindow, ABadPathAtTheStartOpensAModalWindow) {
    ui.start({ui.dir / "nothing"});
    QWidget* dialog = ui.widget("Message Dialog");
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->window() != ui.window.get());
    EXPECT_TRUE(dialog->window()->isVisible());
    EXPECT_TRUE(dialog->window()->isModal());
    EXPECT_EQ(ui.widget("Confirm Dialog"), nullptr);
    ui.click("Message Dialog/Body/OK Button");
    EXPECT_EQ(ui.widget("Message Dialog"), nullptr);
}

TEST_F(RealWindow, ASectionMovedDownStandsLowerOnScreen) {
    write_file(ui.dir / ".lumenfold-site",
               R"({"home": {"sections": [{"type": "custom", "label": "one"},
                                    {"type": "socials"}, {"type": "projects"}]}})");
    ui.start({ui.dir / ".lumenfold-site"});
    ui.row_action("home-0", "down");
    const auto top = [&](const std::string& row) {
        return ui.widget(row)->mapTo(ui.window.get(), QPoint()).y();
    };
    EXPECT_LT(top("home-0"), top("home-1"));
    EXPECT_LT(top("home-1"), top("home-2"));
    EXPECT_EQ(ui.widget("home-0/Edit Button"), nullptr);
    EXPECT_NE(ui.widget("home-1/Edit Button"), nullptr);
}

struct WindowStories : testing::TestWithParam<Story> {};

TEST_P(WindowStories, Play) {
    AppWindow ui;
    play(GetParam(), ui);
}

INSTANTIATE_TEST_SUITE_P(Window, WindowStories, testing::ValuesIn(read_stories("window_stories")),
                         story_name);

} // namespace
} // namespace TestSupport
