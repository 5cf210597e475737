#include "view_fixture.h"

#include <QComboBox>

namespace ViewTest {
namespace {

class ViewInput : public ViewFixture {
protected:
    RenderNode button(const std::string& name, const std::string& intent = {}) {
        return node(name, NodeKind::Button, [=](NodeStyle& style) {
            style.intent = intent;
            style.width = 40;
            style.height = 40;
        });
    }
    void press(const std::string& path, Qt::MouseButton which = Qt::LeftButton) {
        QTest::mousePress(view.widget_at(path), which);
    }
};

TEST_F(ViewInput, AnyPressOnAButtonClicksItAndOnlyButtonsClick) {
    std::vector<std::string> clicks;
    for (const char* path : {"App/Go", "App/Tick", "App/Box", "App/Go/Icon"})
        app.on_click(path, [&clicks, path] { clicks.push_back(path); });
    RenderNode go = button("Go");
    go.children = {node("Icon", NodeKind::Icon)};
    show(box("App", {}, {go, node("Tick", NodeKind::CheckBox), box("Box")}));
    press("App/Go", Qt::RightButton);
    press("App/Tick");
    press("App/Box");
    press("App/Go/Icon");
    EXPECT_EQ(clicks, (std::vector<std::string>{"App/Go", "App/Tick", "App/Go"}));
    EXPECT_TRUE(view.widget_at("App/Go/Icon")->testAttribute(Qt::WA_TransparentForMouseEvents));
}

TEST_F(ViewInput, WindowIntentsActOnTheWindowAndTellNobody) {
    bool told = false;
    const char* intents[] = {"window:maximize", "window:minimize", "window:close", "window:sing"};
    std::vector<RenderNode> buttons;
    for (const char* intent : intents) {
        app.on_click(std::string("App/") + intent, [&] { told = true; });
        buttons.push_back(button(intent, intent));
    }
    buttons.push_back(box("Box", [](NodeStyle& style) { style.intent = "window:close"; }));
    show(box("App", {}, buttons));
    press("App/window:maximize");
    EXPECT_TRUE(window->isMaximized());
    EXPECT_FALSE(app.set_maximized(true));
    press("App/window:maximize");
    EXPECT_FALSE(window->isMaximized());
    press("App/window:sing");
    press("App/Box");
    EXPECT_TRUE(window->isVisible());
    press("App/window:minimize");
    EXPECT_TRUE(window->isMinimized());
    press("App/window:close");
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(told);
}

TEST_F(ViewInput, BoxesTakeTheWindowsIntentsAndCursors) {
    const auto intent = [](const char* what) {
        return [what](NodeStyle& style) { style.intent = what; };
    };
    show(box("App", intent("window:resize"), {box("Bar", intent("window:drag")), button("Go")}));
    EXPECT_TRUE(widget<VBoxWidget>("App")->window_resize);
    EXPECT_TRUE(view.widget_at("App")->hasMouseTracking());
    EXPECT_TRUE(widget<VBoxWidget>("App/Bar")->window_drag);
    EXPECT_EQ(view.widget_at("App/Bar")->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(view.widget_at("App/Go")->cursor().shape(), Qt::PointingHandCursor);
}

TEST_F(ViewInput, AChoiceThatTheHandlerTakesBackLeavesTheControlToo) {
    RenderNode combo = node("Combo", NodeKind::ComboBox);
    combo.items = {{"a", "First"}, {"b", "Second"}};
    combo.selected = "a";
    app.set_options("App/Combo", {{"a", "First"}, {"b", "Second"}});
    std::vector<std::string> chosen;
    app.on_select("App/Combo", [&](const std::string& value) {
        chosen.push_back(value);
        if (chosen.size() == 1)
            app.set_selected("App/Combo", "a");
    });
    show(box("App", {}, {combo}));
    QComboBox* control = widget<ComboWidget>("App/Combo")->combo;
    const auto choose = [&](int index) {
        control->setCurrentIndex(index);
        Q_EMIT control->activated(index);
    };
    choose(1);
    EXPECT_EQ(control->currentIndex(), 0);
    choose(1);
    EXPECT_EQ(control->currentIndex(), 1);
    EXPECT_EQ(chosen, (std::vector<std::string>{"b", "b"}));
}

TEST_F(ViewInput, AHandlerMayEndItsButtonItsWindowOrReplaceItself) {
    int clicks = 0;
    app.on_click("App/Go", [&] {
        ++clicks;
        app.on_click("App/Go", [&] { window.reset(); });
        view.apply_patches({removal("App/Go"), add("App", button("Go"))});
        settle();
    });
    show(box("App", {}, {button("Go")}));
    press("App/Go");
    EXPECT_EQ(clicks, 1);
    press("App/Go");
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(view.widget_at("App"), nullptr);
}

TEST_F(ViewInput, RequestsOfOneTurnCostOneRender) {
    // A deferred render is a call posted to the window.
    struct Calls : QObject {
        int count = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::MetaCall ? 1 : 0;
            return false;
        }
    } calls;
    show(box("App", {}, {editor("Field")}));
    window->installEventFilter(&calls);
    app.on_async_change();
    view.schedule_render();
    QTest::keyClicks(line("App/Field"), QStringLiteral("abc"));
    settle();
    EXPECT_EQ(calls.count, 1);
    // While patches are applied, a render waits as well.
    state.applying = true;
    state.render_now();
    view.schedule_render();
    state.applying = false;
    settle();
    EXPECT_EQ(calls.count, 2);
    EXPECT_FALSE(state.render_pending);
}

TEST_F(ViewInput, TabGoesThroughTheFieldsInReadingOrder) {
    const auto row = [](NodeStyle& style) { style.layout_direction = "Row-Reverse"; };
    show(box("App", {}, {editor("Last"), box("Row", row, {editor("Right"), editor("Left")})}));
    apply({add("App", box("Top", {}, {editor("First")}), 0),
           replace("App/Row", editor("Left")), // first in the row, and so at its right end
           update("App", editor("Last", "", [](NodeStyle& style) { style.margin_left = 4; }))});
    line("App/Top/First")->setFocus();
    std::vector<std::string> order;
    for (int field = 0; field < 4; ++field) {
        order.push_back(window->focusWidget()->parentWidget()->objectName().toStdString());
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"First", "Last", "Right", "Left"}));
}

TEST_F(ViewInput, TheWindowsSizeReachesTheApplication) {
    show(box("App"), 580, 400);
    EXPECT_FALSE(app.set_viewport_width(600));
    window->resize(700, 300);
    settle();
    EXPECT_FALSE(app.set_viewport_width(701));
    EXPECT_TRUE(app.set_viewport_width(600));
}

} // namespace
} // namespace ViewTest
