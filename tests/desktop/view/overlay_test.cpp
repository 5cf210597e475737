#include "view_fixture.h"

#include <QApplication>
#include <QGraphicsOpacityEffect>
#include <QVariantAnimation>

namespace ViewTest {
namespace {

RenderNode bar(const std::string& overlay, double offset, double height = 40) {
    return box("Bar",
               [=](NodeStyle& style) {
                   style.overlay = overlay;
                   style.offset_y = offset;
               },
               {box("Inside", [=](NodeStyle& style) { style.height = height; })});
}

RenderNode side(double offset, double max_width = 100) {
    return box("Side", [=](NodeStyle& style) {
        style.overlay = "SideSheet";
        style.offset_x = offset;
        style.max_width = max_width;
    });
}

RenderNode dialog(std::vector<RenderNode> children = {}) {
    return box(
        "Dialog",
        [](NodeStyle& style) {
            style.overlay = "Modal";
            style.width = 200;
            style.height = 100;
        },
        std::move(children));
}

class ViewOverlays : public ViewFixture {
protected:
    /// "App/Host", 300 by 200 with a border of 2, and `children` in it.
    void show_host(std::vector<RenderNode> children) {
        show(box("App", {},
                 {box(
                     "Host",
                     [](NodeStyle& style) {
                         style.width = 300;
                         style.height = 200;
                         style.border_thickness = 2;
                         style.padding_bottom = 5;
                     },
                     std::move(children))}));
    }
    QRect place(const std::string& path) { return record(path).outer->geometry(); }
    int bottom_margin() { return record("App/Host").layout->contentsMargins().bottom(); }
    bool still(const std::string& path) {
        return QTest::qWaitFor([&] { return !record(path).overlay_animating; });
    }
};

TEST_F(ViewOverlays, APinnedBarReservesWhatItShows) {
    show_host({text("Words", "w"), bar("PinnedBottom", 0)});
    EXPECT_EQ(place("App/Host/Bar"), QRect(2, 158, 296, 40));
    EXPECT_EQ(bottom_margin(), 47);
    EXPECT_EQ(laid_out("App/Host"), std::vector<std::string>{"Words"});
    EXPECT_FALSE(record("App/Host/Bar").bar_effect->isEnabled());

    // Updates of the host, and new sizes, leave the room reserved.
    apply({update("App", box("Host", [](NodeStyle& style) {
                      style.height = 250;
                      style.border_thickness = 2;
                      style.padding_bottom = 5;
                  }))});
    settle();
    EXPECT_EQ(bottom_margin(), 47);
    EXPECT_EQ(place("App/Host/Bar").bottom(), 247);

    apply({update("App/Host", bar("PinnedBottom", 1))});
    EXPECT_TRUE(record("App/Host/Bar").outer->isVisible());
    ASSERT_TRUE(still("App/Host/Bar"));
    EXPECT_FALSE(record("App/Host/Bar").outer->isVisible());
    EXPECT_EQ(bottom_margin(), 7);
    apply({update("App/Host", bar("PinnedBottom", 0.5))});
    ASSERT_TRUE(still("App/Host/Bar"));
    EXPECT_EQ(bottom_margin(), 27);
    EXPECT_EQ(record("App/Host/Bar").bar_effect->opacity(), 0.5);
    EXPECT_TRUE(record("App/Host/Bar").bar_effect->isEnabled());
}

TEST_F(ViewOverlays, OnlyPinnedBarsReserveAndOnlyABottomSheetStays) {
    const struct {
        const char* overlay;
        int margin;
        double after;
    } cases[] = {{"PinnedBottom", 47, 1}, {"ModalSheet", 7, 1}, {"BottomSheet", 7, 0}};
    for (const auto& [overlay, margin, after] : cases) {
        SCOPED_TRACE(overlay);
        show_host({bar(overlay, 0)});
        EXPECT_EQ(bottom_margin(), margin);
        apply({update("App/Host", bar(overlay, 1))});
        ASSERT_TRUE(still("App/Host/Bar"));
        EXPECT_EQ(record("App/Host/Bar").bar_position, after);
        apply({removal("App")});
    }
}

TEST_F(ViewOverlays, ASlideFollowsTheLatestOffset) {
    show_host({bar("PinnedBottom", 0)});
    DNode& dnode = record("App/Host/Bar");
    apply({update("App/Host", bar("PinnedBottom", 1))});
    // Turned back before the first step, while the position is still the old one.
    apply({update("App/Host", bar("PinnedBottom", 0))});
    QTest::qWait(50);
    ASSERT_TRUE(still("App/Host/Bar"));
    EXPECT_EQ(dnode.bar_position, 0);
    EXPECT_EQ(bottom_margin(), 47);

    apply({update("App/Host", bar("PinnedBottom", 1))});
    const QPointer<QVariantAnimation> slide = dnode.overlay_animation;
    ASSERT_TRUE(QTest::qWaitFor([&] { return dnode.bar_position > 0.2; }));
    // Another patch, such as a new colour, does not start the slide anew.
    apply({update("App/Host", bar("PinnedBottom", 1, 50))});
    window->resize(500, 390);
    EXPECT_EQ(dnode.overlay_animation, slide);
    ASSERT_TRUE(still("App/Host/Bar"));
    EXPECT_EQ(dnode.bar_position, 1);
}

TEST_F(ViewOverlays, ABarThatEndsOrComesBackInMidSlideIsSound) {
    show_host({text("A", "a"), text("B", "b"), bar("PinnedBottom", 1)});
    apply({update("App/Host", bar("PinnedBottom", 0))});
    QTest::qWait(40);
    apply({removal("App/Host/Bar")});
    EXPECT_EQ(record("App/Host").floating_children, 0);
    EXPECT_EQ(bottom_margin(), 7);
    apply({add("App/Host", bar("PinnedBottom", 1), 2)});
    QTest::qWait(250);
    EXPECT_EQ(record("App/Host/Bar").bar_position, 1);
    EXPECT_EQ(bottom_margin(), 7);

    // Without its overlay it returns to the layout, at the top.
    apply({update("App/Host", bar("PinnedBottom", 0))});
    QTest::qWait(40);
    apply({update("App/Host", bar("", 0))});
    QTest::qWait(250);
    EXPECT_EQ(laid_out("App/Host"), (std::vector<std::string>{"Bar", "A", "B"}));
    EXPECT_EQ(bottom_margin(), 7);
    EXPECT_EQ(record("App/Host").floating_children, 0);
    EXPECT_TRUE(state.floating.empty());
    EXPECT_EQ(record("App/Host/Bar").outer->graphicsEffect(), nullptr);
    EXPECT_TRUE(record("App/Host/Bar").outer->isVisible());

    // The index of a later child is counted without the floating one.
    apply({update("App/Host", bar("PinnedBottom", 0)), add("App/Host", text("C", "c"), 3)});
    EXPECT_EQ(laid_out("App/Host"), (std::vector<std::string>{"A", "B", "C"}));
}

TEST_F(ViewOverlays, ASidePanelSlidesOverAScrimThatIsItsClick) {
    int clicks = 0;
    app.on_click("App/Host/Side", [&] { ++clicks; });
    show_host({text("Words", "w"), side(0)});
    DNode& dnode = record("App/Host/Side");
    EXPECT_EQ(place("App/Host/Side"), QRect(198, 2, 100, 196));
    EXPECT_EQ(dnode.side_scrim->geometry(), QRect(2, 2, 296, 196));
    QTest::mouseClick(dnode.side_scrim, Qt::RightButton);
    EXPECT_EQ(clicks, 1);

    apply({update("App/Host", side(1, 150))});
    ASSERT_TRUE(still("App/Host/Side"));
    EXPECT_EQ(place("App/Host/Side"), QRect(298, 2, 150, 196));
    EXPECT_FALSE(dnode.outer->isVisible());
    EXPECT_FALSE(dnode.side_scrim->isVisible());

    const QPointer<QWidget> scrim = dnode.side_scrim;
    apply({removal("App/Host/Side")});
    settle();
    EXPECT_TRUE(scrim.isNull());
    EXPECT_EQ(record("App/Host").floating_children, 0);
}

TEST_F(ViewOverlays, OverlaysStayAboveChildrenThatComeLater) {
    show_host({bar("BottomSheet", 0), side(0)});
    apply({add("App/Host", text("Late", "l"), 2), update("App/Host", side(0, 120))});
    std::vector<QWidget*> order;
    for (QObject* child : record("App/Host").box->children())
        if (child->isWidgetType())
            order.push_back(static_cast<QWidget*>(child));
    const std::vector<QWidget*> wanted{record("App/Host/Late").outer, record("App/Host/Bar").outer,
                                       record("App/Host/Side").side_scrim,
                                       record("App/Host/Side").outer};
    EXPECT_EQ(order, wanted);
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
    QWidget* opened = inside->window();
    EXPECT_NE(opened, window.get());
    EXPECT_EQ(opened->size(), QSize(200, 100));
    EXPECT_EQ(opened->pos(), QPoint(300, 200));
    EXPECT_EQ(opened->windowModality(), Qt::ApplicationModal);
    const QPointer<QWidget> scrim = state.modals.at("App/Panes/Dialog").scrim;
    EXPECT_EQ(scrim->geometry(), window->rect());
    window->resize(500, 300);
    EXPECT_EQ(scrim->geometry(), window->rect());

    apply({removal("App/Panes")});
    settle();
    EXPECT_TRUE(scrim.isNull());
    EXPECT_TRUE(state.modals.empty());
    EXPECT_EQ(state.nodes.size(), 1U);
}

TEST_F(ViewOverlays, AModalIsClosedByItsNodeAlone) {
    show(box("App"));
    RenderNode exit = node("Exit Button", NodeKind::Button);
    exit.text = "x";
    app.on_click("App/Dialog/Exit Button", [&] { view.apply_patches({removal("App/Dialog")}); });
    apply({add("App", dialog({exit, editor("Name")}))});
    QPointer<QWidget> opened = view.widget_at("App/Dialog")->window();
    EXPECT_TRUE(QTest::qWaitForWindowActive(opened));
    EXPECT_FALSE(opened->close());
    EXPECT_TRUE(opened->isVisible());
    QTest::mousePress(view.widget_at("App/Dialog/Exit Button"), Qt::LeftButton);
    EXPECT_FALSE(opened->isVisible());
    settle();
    EXPECT_TRUE(opened.isNull());
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    apply({add("App", dialog()), removal("App/Dialog"), add("App", dialog())});
    settle();
    EXPECT_EQ(state.modals.size(), 1U);
    EXPECT_EQ(QApplication::topLevelWidgets().size(), 2);
}

TEST_F(ViewOverlays, ScrollingRendersOnlyWhileNothingSlides) {
    const auto scroll = [](NodeStyle& style) { style.layout_scroll = "Vertical"; };
    const auto tall = [](NodeStyle& style) { style.height = 2000; };
    show(box("App", {},
             {box("Host", {}, {bar("PinnedBottom", 0)}), box("Panel",
                                                             [&](NodeStyle& s) {
                                                                 scroll(s);
                                                                 s.layout_grow = 1;
                                                             },
                                                             {box("Tall", tall)})}));
    app.set_viewport_width(500);
    QScrollBar* scroll_bar = record("App/Panel").scroll_area->verticalScrollBar();
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
