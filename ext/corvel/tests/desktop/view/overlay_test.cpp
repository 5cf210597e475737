#include "view_fixture.h"

#include <QApplication>
#include <QPointer>
#include <QVariantAnimation>

namespace ViewTest {
namespace {

RenderNode bar(const std::string& overlay, double offset, double height = 40) {
    return box("Bar", {.offset_y = offset, .overlay = overlay},
               {box("Inside", {.height = height})});
}

RenderNode side(double max_width) {
    return box("Side", {.max_width = max_width, .overlay = "SideSheet"});
}

RenderNode dialog(std::vector<RenderNode> children = {}) {
    return box("Dialog", {.width = 200, .height = 100, .overlay = "Modal"}, std::move(children));
}

class ViewOverlays : public ViewFixture {
protected:
    void show_host(std::vector<RenderNode> children) {
        show(box("App", {}, {box("Host", {.width = 300, .height = 200}, std::move(children))}));
    }
    DNode& bar_record() { return record("App/Host/Bar"); }
};

TEST_F(ViewOverlays, ASlideFollowsTheLatestOffset) {
    show_host({bar("PinnedBottom", 0)});
    // Turned back before the first step, while the position is still the old one.
    view.apply_patches({update("App/Host", bar("PinnedBottom", 1))});
    view.apply_patches({update("App/Host", bar("PinnedBottom", 0))});
    QTest::qWait(50);
    ASSERT_TRUE(still("App/Host/Bar"));
    EXPECT_EQ(bar_record().overlay.position, 0);
    EXPECT_EQ(record("App/Host").layout->contentsMargins().bottom(), 40);

    apply({update("App/Host", bar("PinnedBottom", 1))});
    const QPointer<QVariantAnimation> slide = bar_record().overlay.slide;
    EXPECT_EQ(slide->duration(), 200);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar_record().overlay.position > 0.2; }));
    // Another patch, such as a new colour, does not start the slide anew, and neither does a size.
    apply({update("App/Host", bar("PinnedBottom", 1, 50))});
    window->resize(500, 390);
    EXPECT_EQ(bar_record().overlay.slide, slide);
    ASSERT_TRUE(still("App/Host/Bar"));
    EXPECT_EQ(bar_record().overlay.position, 1);
}

TEST_F(ViewOverlays, OverlaysStayAboveChildrenThatComeLater) {
    show_host({bar("BottomSheet", 0), side(100)});
    apply({add("App/Host", text("Late", "l"), 2), update("App/Host", side(120))});
    const QList<QWidget*> wanted{record("App/Host/Late").outer, bar_record().outer,
                                 record("App/Host/Side").overlay.scrim,
                                 record("App/Host/Side").outer};
    EXPECT_EQ(record("App/Host").box->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly),
              wanted);
}

TEST_F(ViewOverlays, AModalDescendantBecomesAWindowOnceTheMainOneIsShown) {
    apply({add("", box("App", {}, {box("Panes", {}, {dialog({text("Words", "w")}), box("P")})}))});
    QWidget* inside = view.widget_at("App/Panes/Dialog");
    ASSERT_NE(inside, nullptr);
    EXPECT_FALSE(inside->window()->isVisible());
    EXPECT_FALSE(window->windowHandle());
    EXPECT_EQ(laid_out("App/Panes"), std::vector<std::string>{"P"});

    window->setGeometry(100, 50, 601, 400);
    window->show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return inside->window()->isVisible(); }));
    EXPECT_NE(inside->window(), window.get());
    EXPECT_EQ(inside->window()->geometry(), QRect(300, 200, 200, 100));
    EXPECT_EQ(inside->window()->windowModality(), Qt::ApplicationModal);
    const QPointer<QWidget> scrim = state.overlays.modals.at("App/Panes/Dialog").scrim;
    window->resize(500, 300);
    EXPECT_EQ(scrim->geometry(), window->rect());
    apply({removal("App/Panes")});
    EXPECT_TRUE(scrim.isNull());
    EXPECT_EQ(state.nodes.size(), 1U);
}

TEST_F(ViewOverlays, ADialogIsClosedByItsNodeAloneAndItsKeysPressButtons) {
    const NodeStyle size{.width = 20, .height = 20};
    std::vector<std::string> pressed;
    for (const char* name : {"Titlebar/Exit Button", "Cancel", "Save"})
        app.on_click(std::string("App/Dialog/") + name, [&, name] { pressed.push_back(name); });
    const RenderNode opened =
        dialog({box("Titlebar", {}, {node(NodeKind::Button, "Exit Button", size)}), editor("Name"),
                node(NodeKind::Button, "Cancel", size), node(NodeKind::Button, "Save", size)});
    show(box("App"));
    apply({add("App", opened), removal("App/Dialog"), add("App", opened)});
    EXPECT_EQ(QApplication::topLevelWidgets().size(), 2);
    QWidget* dialog_window = view.widget_at("App/Dialog")->window();
    EXPECT_TRUE(QTest::qWaitForWindowActive(dialog_window));
    dialog_window->setFocus();
    QTest::keyClick(dialog_window, Qt::Key_Return); // answers no question
    EXPECT_FALSE(dialog_window->close());
    QTest::keyClick(dialog_window, Qt::Key_Escape);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Escape, {}, QString(), true);
    QCoreApplication::sendEvent(dialog_window, &held); // would leave the next dialog as well
    line("App/Dialog/Name")->setFocus();
    QTest::keyClick(line("App/Dialog/Name"), Qt::Key_Return);
    const std::string exit = "Titlebar/Exit Button";
    EXPECT_EQ(pressed, (std::vector<std::string>{exit, exit, "Save"}));
    EXPECT_TRUE(dialog_window->isVisible());
    apply({removal("App/Dialog")});
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

TEST_F(ViewOverlays, ScrollingRendersOnlyWhileNothingSlides) {
    show(box("App", {},
             {box("Host", {}, {bar("PinnedBottom", 0)}),
              box("Panel", {.layout_scroll = "Vertical", .layout_grow = 1},
                  {box("Tall", {.height = 2000})})}));
    app.set_viewport_width(500);
    QScrollBar* scroll_bar = record("App/Panel").arrangement.scroll_area->verticalScrollBar();
    apply({update("App/Host", bar("PinnedBottom", 1))});
    scroll_bar->setValue(40);
    EXPECT_TRUE(app.set_controls_hidden(true));
    EXPECT_TRUE(app.set_controls_hidden(false));
    ASSERT_TRUE(still("App/Host/Bar"));
    scroll_bar->setValue(80);
    EXPECT_FALSE(app.set_controls_hidden(true));
}

} // namespace
} // namespace ViewTest
