#include "view_fixture.h"

#include <QComboBox>

namespace ViewTest {
namespace {

class ViewInput : public ViewFixture {
protected:
    RenderNode button(const std::string& name, const std::string& intent = {}) {
        return node(NodeKind::Button, name, {.width = 40, .height = 40, .intent = intent});
    }
};

TEST_F(ViewInput, AnyPressOnAButtonClicksItAndOnlyButtonsClick) {
    std::vector<std::string> clicks;
    for (const char* path : {"App/Go", "App/Tick", "App/Box"})
        app.on_click(path, [&clicks, path] { clicks.push_back(path); });
    const NodeStyle small{.width = 10, .height = 10};
    RenderNode go = button("Go");
    go.children = {node(NodeKind::Icon, "Icon", small), text("Words", "w")};
    show(box("App", {.intent = "window:close"},
             {go, node(NodeKind::CheckBox, "Tick", small), box("Box", small)}));
    const std::pair<const char*, Qt::MouseButton> presses[] = {{"App/Go", Qt::RightButton},
                                                               {"App/Go/Icon", Qt::LeftButton},
                                                               {"App/Go/Words", Qt::MiddleButton},
                                                               {"App/Tick", Qt::LeftButton},
                                                               {"App/Box", Qt::LeftButton}};
    for (const auto& [path, which] : presses)
        QTest::mouseClick(window->windowHandle(), which, {}, place(path).center());
    EXPECT_EQ(clicks, (std::vector<std::string>{"App/Go", "App/Go", "App/Go", "App/Tick"}));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(ViewInput, WindowIntentsActOnTheWindowAndTellNobody) {
    bool told = false;
    std::vector<RenderNode> buttons;
    for (const char* intent :
         {"window:maximize", "window:minimize", "window:close", "window:sing"}) {
        app.on_click(std::string("App/") + intent, [&] { told = true; });
        buttons.push_back(button(intent, intent));
    }
    show(box("App", {}, buttons));
    press("App/window:maximize");
    EXPECT_TRUE(window->isMaximized());
    EXPECT_FALSE(app.set_maximized(true)) << "the application knows";
    press("App/window:maximize");
    EXPECT_FALSE(window->isMaximized());
    press("App/window:sing");
    EXPECT_TRUE(window->isVisible());
    press("App/window:minimize");
    EXPECT_TRUE(window->isMinimized());
    press("App/window:close");
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(told);
}

TEST_F(ViewInput, ThePointerShowsWhatAPressWouldDo) {
    show(box("App", {.layout_align = "Stretch", .intent = "window:resize"},
             {box("Bar", {.height = 40, .intent = "window:drag"}), button("Go")}));
    EXPECT_EQ(view.widget_at("App/Bar")->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(view.widget_at("App/Go")->cursor().shape(), Qt::PointingHandCursor);
    VBoxWidget* edges = widget<VBoxWidget>("App");
    const std::pair<QPoint, Qt::CursorShape> cases[] = {
        {{8, 30}, Qt::SizeHorCursor},   {{9, 30}, Qt::ArrowCursor},
        {{592, 30}, Qt::SizeHorCursor}, {{50, 8}, Qt::SizeVerCursor},
        {{0, 0}, Qt::SizeFDiagCursor},  {{8, 392}, Qt::SizeBDiagCursor},
    };
    for (const auto& [at, shape] : cases) {
        QMouseEvent move(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(edges, &move);
        EXPECT_EQ(edges->cursor().shape(), shape) << at.x() << ", " << at.y();
    }
    // The window system is asked to resize or move; a press elsewhere is left to the parent.
    const std::tuple<const char*, QPoint, bool> presses[] = {
        {"App", {3, 200}, true}, {"App", {300, 300}, false}, {"App/Bar", {300, 20}, true}};
    for (const auto& [path, at, taken] : presses) {
        QMouseEvent down(QEvent::MouseButtonPress, at, at, Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(view.widget_at(path), &down);
        EXPECT_EQ(down.isAccepted(), taken) << path << at.x();
    }
}

TEST_F(ViewInput, AChoiceThatTheHandlerTakesBackLeavesTheControlToo) {
    RenderNode combo = node(NodeKind::ComboBox, "Combo");
    combo.items = {{"a", "First"}, {"b", "Second"}};
    combo.selected = "a";
    app.set_options("App/Combo", combo.items);
    bool refuse = true;
    app.on_select("App/Combo", [&](const std::string&) {
        if (refuse)
            app.set_selected("App/Combo", "a");
    });
    show(box("App", {}, {combo}));
    QComboBox* control = widget<ComboWidget>("App/Combo")->combo;
    control->setFocus();
    QTest::keyClick(control, Qt::Key_Down);
    EXPECT_EQ(control->currentText(), QStringLiteral("First"));
    refuse = false;
    QTest::keyClick(control, Qt::Key_Down);
    EXPECT_EQ(control->currentText(), QStringLiteral("Second"));
}

TEST_F(ViewInput, AHandlerMayEndItsButtonItsWindowOrReplaceItself) {
    int clicks = 0;
    app.on_click("App/Go", [&] {
        ++clicks;
        app.on_click("App/Go", [&] { window.reset(); });
        apply({removal("App/Go"), add("App", button("Go"))});
        ++clicks; // what the replaced handler holds is still there
    });
    show(box("App", {}, {button("Go")}));
    press("App/Go");
    EXPECT_EQ(clicks, 2);
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
}

TEST_F(ViewInput, TabGoesThroughTheFieldsInReadingOrder) {
    show(box("App", {},
             {editor("Last"),
              box("Row", {.layout_direction = "Row-Reverse"}, {editor("Right"), editor("Left")})}));
    apply({add("App", box("Top", {}, {editor("First")}), 0),
           replace("App/Row", editor("Left")), // first in the row, and so at its right end
           update("App", editor("Last", "", {.margin_left = 4}))});
    line("App/Top/First")->setFocus();
    std::vector<std::string> order;
    for (int field = 0; field < 4; ++field) {
        order.push_back(window->focusWidget()->parentWidget()->objectName().toStdString());
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"First", "Last", "Right", "Left"}));
}

} // namespace
} // namespace ViewTest
