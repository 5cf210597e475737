#include "view_fixture.h"

#include <QApplication>
#include <QPointer>

namespace ViewTest {
namespace {

using Names = std::vector<std::string>;

class ViewPatches : public ViewFixture {};

TEST_F(ViewPatches, AnUpdateLeavesFocusCaretSelectionAndScrollPositionAlone) {
    std::vector<RenderNode> rows{editor("Field", "some words"), text("Line", "A line")};
    for (int row = 0; row < 40; ++row)
        rows.push_back(text("Line " + std::to_string(row), "A line"));
    NodeStyle panel{.layout_scroll = "Vertical", .layout_grow = 1};
    show(box("App", {}, {box("Panel", panel, rows)}));
    QLineEdit* field = line("App/Panel/Field");
    QScrollBar* bar = record("App/Panel").scroll_area->verticalScrollBar();
    field->setFocus();
    field->setSelection(5, 3);
    bar->setValue(bar->maximum() / 2);
    const int position = bar->value();
    ASSERT_GT(position, 0);

    panel.fill.text = "#102030";
    apply({update("App/Panel", text("Line", "Another line")),
           update("App/Panel", editor("Field", "some words", {.layout_grow = 1})),
           update("App", box("Panel", panel)),
           replace("App/Panel", editor("Line 0", "now a field"))});
    EXPECT_EQ(line("App/Panel/Field"), field);
    EXPECT_TRUE(field->hasFocus());
    EXPECT_EQ(field->selectedText(), QStringLiteral("wor"));
    EXPECT_EQ(field->cursorPosition(), 8);
    EXPECT_EQ(bar->value(), position);
    EXPECT_EQ(widget<WrapLabel>("App/Panel/Line")->text(), QStringLiteral("Another line"));
}

TEST_F(ViewPatches, ChildrenStandInOrderBehindTheCaptionAndAReplacedOneComesFirst) {
    show(node(NodeKind::Button, "App", {}, {text("A", "a"), text("C", "c")}, "Caption"));
    apply({add("App", text("B", "b"), 1), add("App", text("D", "d"), 3)});
    EXPECT_EQ(laid_out("App"), (Names{"(caption)", "A", "B", "C", "D"}));
    apply({replace("App", box("C")), removal("App/A"), add("App", text("Far", "f"), 99)});
    EXPECT_EQ(laid_out("App"), (Names{"(caption)", "C", "B", "D", "Far"}));
}

TEST_F(ViewPatches, ARemovalTakesDescendantsButNoNeighbourOfASimilarPath) {
    // Ids of rows hold slashes; "dir:/a" is no ancestor of "dir:/a/b".
    const RenderNode label = text("Label", "l");
    show(
        box("App", {}, {box("dir:/a", {}, {label}), box("dir:/a/b", {}, {label}), box("dir:/ab")}));
    const QPointer<QWidget> gone = view.widget_at("App/dir:/a/Label");
    apply({removal("App/dir:/a")});
    EXPECT_TRUE(gone.isNull());
    EXPECT_EQ(view.widget_at("App/dir:/a/Label"), nullptr);
    EXPECT_NE(view.widget_at("App/dir:/a/b/Label"), nullptr);
    EXPECT_EQ(laid_out("App"), (Names{"dir:/a/b", "dir:/ab"}));
}

TEST_F(ViewPatches, PatchesThatFitNothingDoNothing) {
    show(box("App", {}, {text("Leaf", "l")}));
    apply({removal("App/None"), update("App", text("None", "x")), editor_text("App/None", "x"),
           editor_text("App/Leaf", "x"), add("App/None", box("Child")),
           add("App", box("Short", {}, {editor("Comes and goes")})), removal("App/Short")});
    for (QWidget* other : QApplication::topLevelWidgets())
        EXPECT_TRUE(other == window.get() || !other->isVisible());
    EXPECT_EQ(state.nodes.size(), 3U);
}

TEST_F(ViewPatches, PatchesThatComeInMeanwhileAreAppliedAfterwards) {
    const auto bar = [](double height) {
        return box("Bar", {.height = height, .overlay = "PinnedBottom"});
    };
    show(box("App", {}, {bar(20)}));
    widget<VBoxWidget>("App/Bar")->on_resize = [&] {
        EXPECT_TRUE(state.applying);
        view.apply_patches({removal("App/Late")});
    };
    apply({update("App", bar(50)), add("App", text("Late", "l"), 1)});
    EXPECT_EQ(view.widget_at("App/Late"), nullptr);
    // A render could end the bar that is being placed.
    widget<VBoxWidget>("App/Bar")->on_resize = [&] { state.render_now(); };
    window->resize(500, 400);
    EXPECT_TRUE(state.render_pending);
}

TEST_F(ViewPatches, ALongListComesInPortionsAndIsWholeForTheNextPatch) {
    constexpr int ROWS = 700;
    const auto row = [](int i) {
        return box("Row " + std::to_string(i), {}, {box("A"), box("B"), text("C", "c")});
    };
    std::vector<RenderNode> rows;
    std::vector<std::string> names;
    for (int i = 0; i < ROWS; ++i) {
        rows.push_back(row(i));
        names.push_back("Row " + std::to_string(i));
    }
    show(box("App", {}, {text("Words", "w")}));
    const auto fill = [&] {
        view.apply_patches({removal("App/List"), add("App", box("List", {}, rows), 1)});
        EXPECT_NE(view.widget_at("App/List/Row 39/C"), nullptr);
        EXPECT_EQ(view.widget_at("App/List/Row 699"), nullptr);
    };
    fill();
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.widget_at("App/List/Row 699/C") != nullptr; }));
    EXPECT_EQ(laid_out("App/List"), names);

    // As a part of a new tree, and row by row; what comes next finds all that went before.
    fill();
    apply({removal("App/List/Row 500"), add("App/List", box("New"), 650)});
    names.erase(names.begin() + 500);
    names.insert(names.begin() + 650, "New");
    EXPECT_EQ(laid_out("App/List"), names);

    view.apply_patches({removal("App/List"), add("App", box("List"), 1)});
    std::vector<RenderPatch> patches;
    for (int i = 0; i < ROWS; ++i)
        patches.push_back(add("App/List", row(i), i));
    patches.push_back(update("App/List/Row 699", text("C", "new")));
    view.apply_patches(patches);
    EXPECT_EQ(view.widget_at("App/List/Row 699"), nullptr);
    apply({update("App", text("Words", "other"))});
    EXPECT_EQ(laid_out("App/List").size(), std::size_t{ROWS});
    EXPECT_EQ(widget<WrapLabel>("App/List/Row 699/C")->text(), QStringLiteral("new"));

    fill();
    apply({removal("App")}); // nothing is made for a list that is gone
    QTest::qWait(50);
    EXPECT_TRUE(state.nodes.empty());
}

} // namespace
} // namespace ViewTest
