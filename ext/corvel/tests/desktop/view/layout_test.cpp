#include "view_fixture.h"

#include <QApplication>
#include <QPointer>
#include <QWheelEvent>

namespace ViewTest {
namespace {

class ViewLayout : public ViewFixture {};

TEST_F(ViewLayout, ALongTextGetsTheHeightThatItsWordsNeedAtItsWidth) {
    std::string many;
    for (int word = 0; word < 60; ++word)
        many += "word ";
    for (const double max_width : {0, 200}) {
        const NodeStyle style{.font_size = 14, .max_width = max_width};
        show(box("App", {.layout_align = "Stretch"}, {text("Words", "few", style)}));
        const int before = place("App/Words").height();
        apply({update("App", text("Words", many, style))});
        const WrapLabel* label = widget<WrapLabel>("App/Words");
        EXPECT_EQ(label->width(), max_width > 0 ? 200 : 600);
        EXPECT_GE(label->height(), std::max(2 * before, label->heightForWidth(label->width())));
    }
}

TEST_F(ViewLayout, AFoldThatIsTurnedBackStartsFromNothing) {
    const auto row = [&](bool collapsed) {
        return box("Row", {.collapsed = collapsed}, {box("Inside", {.width = 10, .height = 80})});
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
    const QScrollBar* bar = record("App/Strip").arrangement.scroll_area->horizontalScrollBar();
    const auto activate = [&](const char* from, const char* to) {
        app.remove_state(from, "Active");
        app.add_state(to, "Active");
        apply({update("App/Strip", box("Tab 0", {.width = 100, .height = 20}))});
        settle();
    };
    activate("App/Strip/Tab 0", "App/Strip/Tab 8");
    EXPECT_EQ(bar->value(), bar->maximum());

    QWidget* viewport = record("App/Strip").arrangement.scroll_area->viewport();
    QWheelEvent turn(QPointF(5, 5), viewport->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, 120),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &turn);
    EXPECT_EQ(bar->value(), bar->maximum() - 120);
    // A patch that leaves the active child as it is moves nothing.
    activate("App/Strip/Tab 8", "App/Strip/Tab 8");
    EXPECT_EQ(bar->value(), bar->maximum() - 120);
    activate("App/Strip/Tab 8", "App/Strip/Tab 0");
    EXPECT_EQ(bar->value(), 0);
    activate("App/Strip/Tab 0", "App/Strip/Tab 5");
    window->resize(150, 400);
    settle();
    settle();
    const QRect tab = place("App/Strip/Tab 5");
    EXPECT_TRUE(QRect(0, 0, 150, 400).contains(tab)) << tab.left() << " to " << tab.right();
}

} // namespace
} // namespace ViewTest
