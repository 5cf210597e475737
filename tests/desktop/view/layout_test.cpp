#include "desktop/max_width_container.h"
#include "view_fixture.h"

namespace ViewTest {
namespace {

const auto STRETCH = [](NodeStyle& style) { style.layout_align = "Stretch"; };

StyleEdit sized(double width, double height) {
    return [width, height](NodeStyle& style) {
        style.width = width;
        style.height = height;
    };
}

class ViewLayout : public ViewFixture {
protected:
    /// Where a node's widget lies in the window.
    QRect place(const std::string& path) {
        QWidget* shown = view.widget_at(path);
        return {shown->mapTo(window.get(), QPoint()), shown->size()};
    }
    MaxWidthContainer* container(const std::string& path) {
        return qobject_cast<MaxWidthContainer*>(record(path).outer);
    }
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
        {"Column", "Start", "Start", {0, 0}, {0, 20}},
        {"Column", "End", "End", {560, 360}, {560, 380}},
        {"Column-Reverse", "", "Start", {280, 380}, {280, 360}},
        {"Row", "", "Start", {0, 190}, {40, 190}},
        {"Row", "Start", "End", {520, 0}, {560, 0}},
        {"Row-Reverse", "End", "Start", {560, 380}, {520, 380}},
    };
    show(box("App"));
    for (const auto& [direction, align, justify, first, second] : cases) {
        SCOPED_TRACE(std::string(direction) + "/" + align + "/" + justify);
        const auto style = [direction = direction, align = align, justify = justify](NodeStyle& s) {
            s.layout_direction = direction;
            s.layout_align = align;
            s.layout_justify = justify;
        };
        // Once from its creation, once by an Update of another box.
        apply({update("App", box("App")), removal("App"),
               add("", box("App", style, {box("A", sized(40, 20)), box("B", sized(40, 20))}))});
        settle();
        EXPECT_EQ(place("App/A").topLeft(), first);
        EXPECT_EQ(place("App/B").topLeft(), second);
        apply({update("", box("App")), update("", box("App", style))});
        settle();
        EXPECT_EQ(place("App/A").topLeft(), first);
        EXPECT_EQ(place("App/B").topLeft(), second);
    }
}

TEST_F(ViewLayout, MarginsPaddingBorderAndSpacingAddUp) {
    const auto padded = [](NodeStyle& style) {
        style.padding_left = 10.9;
        style.padding_top = 20;
        style.border_thickness = 3;
        style.layout_spacing = 7;
        style.layout_align = "Start";
        style.layout_justify = "Start";
    };
    const auto with_margin = [](double left) {
        return [left](NodeStyle& style) {
            style.width = 50;
            style.height = 20;
            style.margin_left = left;
            style.margin_top = 5;
        };
    };
    show(box("App", padded, {box("A", with_margin(4)), box("B", sized(50, 20))}));
    EXPECT_EQ(place("App/A"), QRect(17, 28, 50, 20));
    EXPECT_EQ(place("App/B"), QRect(13, 55, 50, 20));
    QWidget* widget_before = view.widget_at("App/A");
    apply({update("App", box("A", with_margin(8)))});
    settle();
    EXPECT_EQ(place("App/A"), QRect(21, 28, 50, 20));
    apply({update("App", box("A", sized(50, 20)))});
    settle();
    EXPECT_EQ(place("App/A"), QRect(13, 23, 50, 20));
    EXPECT_EQ(laid_out("App"), (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(view.widget_at("App/A"), widget_before);
}

TEST_F(ViewLayout, GrowingChildrenShareTheRoomAndEndTheCentring) {
    const auto grown = [](double grow) {
        return [grow](NodeStyle& style) {
            style.layout_grow = grow;
            style.width = 40;
        };
    };
    show(box("App", {}, {box("A", grown(1)), box("B", grown(3)), box("C", sized(40, 40))}));
    EXPECT_EQ(place("App/A").height(), 90);
    EXPECT_EQ(place("App/B").height(), 270);
    apply({update("App", box("A", sized(40, 40))), update("App", box("B", sized(40, 40)))});
    settle();
    EXPECT_EQ(place("App/A").top(), 140);
    apply({removal("App/A"), update("App", box("B", grown(1)))});
    settle();
    EXPECT_EQ(place("App/B").height(), 360);
}

TEST_F(ViewLayout, LimitedWidthIsCentredInAColumnAndAShareInARow) {
    const auto limited = [](NodeStyle& style) {
        style.max_width = 200;
        style.layout_grow = 1;
    };
    const auto row = [](NodeStyle& style) { style.layout_direction = "Row"; };
    show(box("App", {}, {box("Panel", limited)}));
    EXPECT_EQ(place("App/Panel"), QRect(200, 0, 200, 400));
    window->resize(150, 400);
    settle();
    EXPECT_EQ(place("App/Panel"), QRect(0, 0, 150, 400));
    window->resize(600, 400);

    apply({update("", box("App", row))});
    settle();
    EXPECT_TRUE(container("App/Panel")->bounded);
    EXPECT_EQ(place("App/Panel").left(), 200);
    EXPECT_EQ(record("App").layout->stretch(0), 1);
    EXPECT_EQ(record("App").layout->stretch(1), 0);

    apply({update("", box("App")), update("App", box("Panel"))});
    settle();
    EXPECT_EQ(container("App/Panel"), nullptr);
    apply({update("", box("App", row)), update("App", box("Panel", limited))});
    EXPECT_TRUE(container("App/Panel")->bounded);
}

TEST_F(ViewLayout, ALimitedTextGetsTheHeightThatItsNewWordsNeed) {
    const auto limited = [](NodeStyle& style) {
        style.max_width = 200;
        style.font_size = 14;
    };
    show(box("App", STRETCH, {text("Words", "few", limited)}));
    const int before = place("App/Words").height();
    std::string many;
    for (int word = 0; word < 60; ++word)
        many += "word ";
    apply({update("App", text("Words", many, limited))});
    settle();
    EXPECT_GE(place("App/Words").height(), 5 * before);
    EXPECT_EQ(place("App/Words").width(), 200);
}

TEST_F(ViewLayout, AFixedHeightOutlivesUpdatesAndFolding) {
    const auto fixed = [](bool collapsed) {
        return [collapsed](NodeStyle& style) {
            style.height = 40;
            style.collapsed = collapsed;
        };
    };
    show(box("App", STRETCH, {box("Row", fixed(false))}));
    apply({update("App", box("Row", fixed(false)))});
    settle();
    EXPECT_EQ(place("App/Row").height(), 40);
    apply({update("App", box("Row", fixed(true)))});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !record("App/Row").collapse_animation; }));
    EXPECT_EQ(view.widget_at("App/Row")->height(), 0);
    apply({update("App", box("Row", fixed(true)))});
    settle();
    EXPECT_EQ(view.widget_at("App/Row")->height(), 0);
    apply({update("App", box("Row", fixed(false)))});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !record("App/Row").collapse_animation; }));
    settle();
    EXPECT_EQ(view.widget_at("App/Row")->height(), 40);
    apply({add("App", box("Born folded", fixed(true)))});
    EXPECT_EQ(view.widget_at("App/Born folded")->maximumHeight(), 0);
}

TEST_F(ViewLayout, AFoldThatIsTurnedBackStartsFromNothing) {
    const auto folded = [](bool collapsed) {
        return [collapsed](NodeStyle& style) { style.collapsed = collapsed; };
    };
    const auto row = [&](bool collapsed) {
        return box("Row", folded(collapsed), {box("Inside", sized(10, 80))});
    };
    show(box("App", {}, {row(false)}));
    QWidget* widget = view.widget_at("App/Row");
    apply({update("App", row(true))});
    EXPECT_EQ(widget->maximumHeight(), 80);
    EXPECT_TRUE(QTest::qWaitFor([&] { return widget->maximumHeight() < 60; }));
    // Another patch in between must not let the height jump.
    apply({update("App", row(true))});
    EXPECT_LT(widget->maximumHeight(), 60);
    apply({update("App", row(false))});
    EXPECT_EQ(widget->maximumHeight(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return widget->maximumHeight() == QWIDGETSIZE_MAX; }));
    EXPECT_EQ(widget->minimumHeight(), 0);
    // Gone in the middle of a fold.
    apply({update("App", row(true))});
    apply({removal("App/Row"), add("App", row(false))});
    QTest::qWait(200);
    EXPECT_EQ(view.widget_at("App/Row")->maximumHeight(), QWIDGETSIZE_MAX);
}

TEST_F(ViewLayout, ScrollingComesAndGoesWithoutLosingAChild) {
    const auto scroll = [](const char* way) {
        return [way](NodeStyle& style) { style.layout_scroll = way; };
    };
    show(box("App", {}, {box("A", sized(40, 20)), text("B", "b"), box("C", sized(40, 20))}));
    const std::vector<std::string> order{"A", "B", "C"};
    const std::pair<const char*, std::pair<Qt::ScrollBarPolicy, Qt::ScrollBarPolicy>> ways[] = {
        {"Vertical", {Qt::ScrollBarAsNeeded, Qt::ScrollBarAlwaysOff}},   {"", {}},
        {"Horizontal", {Qt::ScrollBarAlwaysOff, Qt::ScrollBarAsNeeded}}, {"", {}},
        {"Both", {Qt::ScrollBarAsNeeded, Qt::ScrollBarAsNeeded}},
    };
    for (const auto& [way, policies] : ways) {
        SCOPED_TRACE(way);
        apply({update("", box("App", scroll(way)))});
        settle();
        EXPECT_EQ(laid_out("App"), order);
        for (const std::string& name : order)
            EXPECT_TRUE(view.widget_at("App/" + name)->isVisible()) << name;
        QScrollArea* area = record("App").scroll_area;
        ASSERT_EQ(area != nullptr, *way != '\0');
        EXPECT_EQ(window->findChildren<QScrollArea*>().size(), area ? 1 : 0);
        if (!area)
            continue;
        EXPECT_EQ(area->verticalScrollBarPolicy(), policies.first);
        EXPECT_EQ(area->horizontalScrollBarPolicy(), policies.second);
        EXPECT_EQ(state.scroll_values.size(), policies.first == Qt::ScrollBarAsNeeded ? 1U : 0U);
    }
    apply({removal("App")});
    settle();
    EXPECT_TRUE(state.scroll_values.empty());
    EXPECT_TRUE(state.themed_bars.empty());
}

} // namespace
} // namespace ViewTest
