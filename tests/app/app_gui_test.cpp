#include "app_window.h"
#include "story_player.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPoint>
#include <QTest>
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

/// A person without a mouse: Tab until the control of that name has the focus.
struct KeyboardOnly : RealWindow {
    static std::string focused() {
        const QWidget* focus = QApplication::focusWidget();
        if (!focus)
            return {};
        const bool control = qobject_cast<const QLineEdit*>(focus) != nullptr;
        return (control ? focus->parentWidget() : focus)->objectName().toStdString();
    }
    void key(Qt::Key pressed) {
        QWidget* window = QApplication::activeWindow();
        ASSERT_NE(window, nullptr);
        QTest::keyClick(window->focusWidget() ? window->focusWidget() : window, pressed);
        ui.advance(0);
        QCoreApplication::processEvents();
    }
    void tab_to(const std::string& name) {
        for (int steps = 0; steps < 100 && focused() != name; ++steps)
            key(Qt::Key_Tab);
        EXPECT_EQ(focused(), name);
    }
    void press(const std::string& name, Qt::Key pressed = Qt::Key_Return) {
        tab_to(name);
        key(pressed);
    }
    void write(const std::string& text) {
        QTest::keyClicks(QApplication::focusWidget(), QString::fromStdString(text));
    }
};

TEST_F(KeyboardOnly, MakesASiteAndBuildsIt) {
    ui.start({});
    press("New Website Button");
    EXPECT_EQ(focused(), "Title Editor") << "its text is selected and gives way";
    write("Harbour");
    tab_to("Location Editor");
    write((ui.dir / "site").string());
    press("Create Button");
    ASSERT_TRUE(QTest::qWaitForWindowActive(ui.window.get()));
    EXPECT_TRUE(ui.shown("Site Configurator"));
    EXPECT_EQ(ui.text("Title Field"), "Harbour");
    press("Socials Tab", Qt::Key_Space);
    press("Add Social Button", Qt::Key_Space);
    EXPECT_EQ(focused(), "Label Editor");
    write("Code");
    tab_to("URL Editor");
    write("https://code.example");
    key(Qt::Key_Return);
    EXPECT_EQ(ui.take_message(), "");
    EXPECT_EQ(ui.rows("Social Cards"), "social-0");
    press("Build Tab");
    press("Build Button");
    ASSERT_EQ(ui.platform.processes.size(), 1U);
    EXPECT_EQ(ui.platform.processes[0].argv[2], "build");
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
