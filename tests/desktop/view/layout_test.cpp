#include "view_fixture.h"

#include <QApplication>
#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>

#include <limits>

namespace ViewTest {
namespace {

RenderNode child(const std::string& name, double width = 40, double height = 20) {
    return box(name, {.width = width, .height = height});
}

class ViewLayout : public ViewFixture {
protected:
    /// Waits for the end of a fold.
    bool still(const std::string& path) {
        return QTest::qWaitFor([&] { return !record(path).collapse_animation; });
    }
    int height_of(const std::string& path) { return view.widget_at(path)->height(); }
};

TEST_F(ViewLayout, ChildrenStandAsDirectionAlignAndJustifySay) {
    const struct {
        const char* direction;
        const char* align;
        const char* justify;
        QPoint first; // of two children of 40 by 20 in a box of 600 by 400
        QPoint second;
    } cases[] = {
        {"", "", "", {280, 180}, {280, 200}},
        {"row", "Start", "Start", {0, 0}, {0, 20}},
        {"Column", "End", "End", {560, 360}, {560, 380}},
        {"Column-Reverse", "", "Start", {280, 380}, {280, 360}},
        {"Row", "", "Start", {0, 190}, {40, 190}},
        {"Row", "Start", "End", {520, 0}, {560, 0}},
        {"Row-Reverse", "End", "Start", {560, 380}, {520, 380}},
    };
    for (const auto& [direction, align, justify, first, second] : cases) {
        SCOPED_TRACE(std::string(direction) + "/" + align + "/" + justify);
        const RenderNode app_box =
            box("App",
                {.layout_direction = direction, .layout_align = align, .layout_justify = justify},
                {child("A"), child("B")});
        show(app_box);
        EXPECT_EQ(place("App/A").topLeft(), first);
        EXPECT_EQ(place("App/B").topLeft(), second);
        apply({update("", box("App")), update("", app_box)});
        EXPECT_EQ(place("App/A").topLeft(), first);
        EXPECT_EQ(place("App/B").topLeft(), second);
    }
}

TEST_F(ViewLayout, AGapBelowNothingIsNoGap) {
    NodeStyle tight{.padding_left = -3, .padding_top = -3, .layout_spacing = -3};
    tight.layout_align = tight.layout_justify = "Start";
    const NodeStyle wrapped{.margin_left = -3, .margin_top = 4, .width = 40, .height = 20};
    show(box("App", tight, {child("A"), box("B", wrapped)}));
    EXPECT_EQ(place("App/A"), QRect(0, 0, 40, 20));
    EXPECT_EQ(place("App/B"), QRect(0, 24, 40, 20));
}

TEST_F(ViewLayout, GrowingChildrenShareTheRoomAndEndTheCentring) {
    const auto grown = [](const std::string& name, double grow) {
        return box(name, {.layout_grow = grow});
    };
    show(box("App", {}, {grown("A", 1.9), grown("B", 3), child("C", 40, 40)}));
    EXPECT_EQ(height_of("App/A"), 90);
    EXPECT_EQ(height_of("App/B"), 270);
    apply({update("App", child("A", 40, 40)), update("App", child("B", 40, 40))});
    EXPECT_EQ(place("App/A").top(), 140);
    apply({removal("App/A"), update("App", grown("B", 1))});
    EXPECT_EQ(height_of("App/B"), 360);
    const double hostile[] = {-3, 0.5, 1e300, std::numeric_limits<double>::quiet_NaN()};
    for (const double grow : hostile)
        apply({update("App", grown("B", grow))});
    EXPECT_EQ(height_of("App/B"), 0);
}

TEST_F(ViewLayout, LimitedWidthIsCentredInAColumnAndAShareInARow) {
    const RenderNode limited = box("Panel", {.layout_grow = 1, .max_width = 200});
    const RenderNode row = box("App", {.layout_direction = "Row"});
    show(box("App", {}, {limited}));
    EXPECT_EQ(place("App/Panel"), QRect(200, 0, 200, 400));
    apply({update("", row)});
    EXPECT_EQ(place("App/Panel").width(), 200);
    EXPECT_EQ(place("App/Panel").left(), 200);
    apply({update("", box("App")), update("App", box("Panel")), update("", row),
           update("App", limited)});
    EXPECT_EQ(place("App/Panel").left(), 200);
    apply({update("", box("App")),
           update("App", box("Panel", {.layout_grow = 1, .max_width = 900}))});
    EXPECT_EQ(place("App/Panel"), QRect(0, 0, 600, 400));
}

TEST_F(ViewLayout, ALongTextGetsTheHeightThatItsWordsNeedAtItsWidth) {
    std::string many;
    for (int word = 0; word < 60; ++word)
        many += "word ";
    for (const double max_width : {0, 200}) {
        const NodeStyle style{.font_size = 14, .max_width = max_width};
        show(box("App", {.layout_align = "Stretch"}, {text("Words", "few", style)}));
        const int before = height_of("App/Words");
        apply({update("App", text("Words", many, style))});
        const WrapLabel* label = widget<WrapLabel>("App/Words");
        EXPECT_EQ(label->width(), max_width > 0 ? 200 : 600);
        EXPECT_GE(label->height(), std::max(2 * before, label->heightForWidth(label->width())));
    }
}

TEST_F(ViewLayout, AFixedHeightOutlivesUpdatesAndFolding) {
    const auto row = [](bool collapsed) {
        return box("Row", {.collapsed = collapsed, .height = 40});
    };
    show(box("App", {.layout_align = "Stretch"}, {row(false)}));
    for (const bool collapsed : {false, true, false}) {
        apply({update("App", row(collapsed))});
        ASSERT_TRUE(still("App/Row"));
        apply({update("App", row(collapsed))});
        EXPECT_EQ(height_of("App/Row"), collapsed ? 0 : 40);
    }
    apply({replace("App", row(true))});
    EXPECT_EQ(height_of("App/Row"), 0);
}

TEST_F(ViewLayout, AFoldThatIsTurnedBackStartsFromNothing) {
    const auto row = [&](bool collapsed) {
        return box("Row", {.collapsed = collapsed}, {child("Inside", 10, 80)});
    };
    show(box("App", {}, {row(false)}));
    const QPointer<QWidget> widget = view.widget_at("App/Row");
    view.apply_patches({update("App", row(true))});
    EXPECT_EQ(widget->maximumHeight(), 80);
    EXPECT_TRUE(QTest::qWaitFor([&] { return widget->maximumHeight() < 60; }));
    // Another patch in between must not let the height jump.
    view.apply_patches({update("App", row(true))});
    EXPECT_LT(widget->maximumHeight(), 60);
    view.apply_patches({update("App", row(false))});
    EXPECT_EQ(widget->maximumHeight(), 0);
    ASSERT_TRUE(still("App/Row"));
    EXPECT_EQ(widget->maximumHeight(), QWIDGETSIZE_MAX);
    EXPECT_EQ(widget->minimumHeight(), 0);
    // Gone in the middle of a fold.
    view.apply_patches({update("App", row(true)), removal("App/Row"), add("App", row(false))});
    QTest::qWait(200);
    EXPECT_TRUE(widget.isNull());
    EXPECT_EQ(view.widget_at("App/Row")->maximumHeight(), QWIDGETSIZE_MAX);
}

TEST_F(ViewLayout, AStripShowsItsActiveChildAndFollowsTheWheel) {
    std::vector<RenderNode> tabs;
    for (int i = 0; i < 9; ++i)
        tabs.push_back(box("Tab " + std::to_string(i), {.width = 100, .height = 20}));
    const RenderNode strip =
        box("Strip", {.layout_direction = "Row", .layout_scroll = "Horizontal"}, std::move(tabs));
    show(box("App", {}, {strip}));
    const QScrollBar* bar = record("App/Strip").scroll_area->horizontalScrollBar();
    const auto activate = [&](const char* from, const char* to) {
        app.remove_state(from, "Active");
        app.add_state(to, "Active");
        apply({update("App/Strip", box("Tab 0", {.width = 100, .height = 20}))});
        settle();
    };
    activate("App/Strip/Tab 0", "App/Strip/Tab 8");
    EXPECT_EQ(bar->value(), bar->maximum());

    QWidget* viewport = record("App/Strip").scroll_area->viewport();
    QWheelEvent turn(QPointF(5, 5), viewport->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, 120),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &turn);
    EXPECT_EQ(bar->value(), bar->maximum() - 120);
    // A patch that leaves the active child as it is moves nothing.
    activate("App/Strip/Tab 8", "App/Strip/Tab 8");
    EXPECT_EQ(bar->value(), bar->maximum() - 120);
    activate("App/Strip/Tab 8", "App/Strip/Tab 0");
    EXPECT_EQ(bar->value(), 0);
}

TEST_F(ViewLayout, ScrollingComesAndGoesWithoutLosingAChild) {
    show(box("App", {}, {child("A"), text("B", "b"), child("C", 2000, 2000)}));
    for (const char* way : {"Vertical", "", "Horizontal", "Both"}) {
        SCOPED_TRACE(way);
        apply({update("", box("App", {.layout_scroll = way}))});
        window->resize(600, 400); // it had grown to the size of its content
        settle();
        EXPECT_EQ(laid_out("App"), (std::vector<std::string>{"A", "B", "C"}));
        EXPECT_TRUE(view.widget_at("App/C")->isVisible());
        EXPECT_EQ(window->findChildren<QScrollArea*>().size(), *way ? 1 : 0);
    }
}

} // namespace
} // namespace ViewTest
