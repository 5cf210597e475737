#include "desktop/widgets/icon_widget.h"
#include "view_fixture.h"

#include <QApplication>
#include <QPointer>

namespace ViewTest {
namespace {

class ViewPatches : public ViewFixture {};

const auto GROW = [](NodeStyle& style) { style.layout_grow = 1; };

TEST_F(ViewPatches, EveryKindGetsItsWidgetUnderItsName) {
    const struct {
        NodeKind kind;
        const char* widget;
    } cases[] = {
        {NodeKind::Box, "Corvel::VBoxWidget"},      {NodeKind::Text, "Corvel::WrapLabel"},
        {NodeKind::Button, "Corvel::VBoxWidget"},   {NodeKind::Icon, "Corvel::IconWidget"},
        {NodeKind::Editor, "Corvel::EditorWidget"}, {NodeKind::Image, "Corvel::ImageWidget"},
        {NodeKind::Video, "Corvel::VideoWidget"},   {NodeKind::Markdown, "Corvel::MarkdownWidget"},
        {NodeKind::QR, "Corvel::QrWidget"},         {NodeKind::CheckBox, "Corvel::VBoxWidget"},
        {NodeKind::Link, "Corvel::VBoxWidget"},     {NodeKind::Host, "Corvel::VBoxWidget"},
        {NodeKind::Scanner, "Corvel::VBoxWidget"},  {NodeKind::ComboBox, "Corvel::ComboWidget"},
    };
    show(box("App"));
    for (const auto& [kind, widget] : cases) {
        apply({add("App", node("A Node", kind))});
        QWidget* made = view.widget_at("App/A Node");
        ASSERT_NE(made, nullptr) << widget;
        EXPECT_STREQ(made->metaObject()->className(), widget);
        EXPECT_EQ(made->objectName(), QStringLiteral("A Node"));
        EXPECT_TRUE(made->isVisible()) << widget;
        apply({update("App", node("A Node", kind)), removal("App/A Node")});
        EXPECT_EQ(view.widget_at("App/A Node"), nullptr);
    }
}

TEST_F(ViewPatches, AnUpdateLeavesFocusCaretSelectionAndScrollPositionAlone) {
    std::vector<RenderNode> rows;
    for (int row = 0; row < 40; ++row)
        rows.push_back(text("Line " + std::to_string(row), "A line"));
    rows.push_back(editor("Field", "some words"));
    show(box("App", {},
             {box(
                 "Panel",
                 [](NodeStyle& style) {
                     style.layout_scroll = "Vertical";
                     style.layout_grow = 1;
                 },
                 rows)}));
    QLineEdit* field = line("App/Panel/Field");
    QScrollBar* bar = record("App/Panel").scroll_area->verticalScrollBar();
    field->setFocus();
    field->setSelection(5, 3);
    bar->setValue(bar->maximum() / 2);
    const int position = bar->value();
    ASSERT_GT(position, 0);

    apply({update("App/Panel", text("Line 3", "Another line")),
           update("App/Panel", editor("Field", "some words", GROW)),
           update("App", box("Panel",
                             [](NodeStyle& style) {
                                 style.layout_scroll = "Vertical";
                                 style.layout_grow = 1;
                                 style.fill.text = "#102030";
                             })),
           replace("App/Panel", editor("Line 0", "now a field"))});
    settle();
    EXPECT_EQ(line("App/Panel/Field"), field);
    EXPECT_TRUE(field->hasFocus());
    EXPECT_EQ(field->selectedText(), QStringLiteral("words").left(3));
    EXPECT_EQ(field->cursorPosition(), 8);
    EXPECT_EQ(bar->value(), position);
    EXPECT_EQ(widget<WrapLabel>("App/Panel/Line 3")->text(), QStringLiteral("Another line"));
}

TEST_F(ViewPatches, ChildrenStandInOrderAndAReplacedOneComesFirst) {
    show(box("App", {}, {text("A", "a"), text("C", "c")}));
    apply({add("App", text("B", "b"), 1), add("App", text("D", "d"), 3)});
    EXPECT_EQ(laid_out("App"), (std::vector<std::string>{"A", "B", "C", "D"}));
    apply({replace("App", box("C"))});
    EXPECT_EQ(laid_out("App"), (std::vector<std::string>{"C", "A", "B", "D"}));
    apply({removal("App/A"), add("App", text("Far", "f"), 99)});
    EXPECT_EQ(laid_out("App"), (std::vector<std::string>{"C", "B", "D", "Far"}));
}

TEST_F(ViewPatches, ACaptionStandsBeforeTheChildren) {
    RenderNode button = node("Go", NodeKind::Button, {}, {text("Label", "child")});
    button.text = "Caption";
    show(box("App", {}, {button}));
    apply({add("App/Go", text("First", "f"), 0)});
    EXPECT_EQ(laid_out("App/Go"), (std::vector<std::string>{"(caption)", "First", "Label"}));
    EXPECT_TRUE(record("App/Go").label->testAttribute(Qt::WA_TransparentForMouseEvents));
}

TEST_F(ViewPatches, ARemovalTakesDescendantsButNoNeighbourOfASimilarPath) {
    // Ids of rows hold slashes; "dir:/a" is no ancestor of "dir:/a/b".
    show(box("App", {},
             {box("List", {},
                  {box("dir:/a", {}, {text("Label", "a")}),
                   box("dir:/a/b", {}, {text("Label", "b")}), box("dir:/ab", {}, {})})}));
    QPointer<QWidget> gone = view.widget_at("App/List/dir:/a/Label");
    apply({removal("App/List/dir:/a")});
    settle();
    EXPECT_TRUE(gone.isNull());
    EXPECT_EQ(view.widget_at("App/List/dir:/a/Label"), nullptr);
    EXPECT_NE(view.widget_at("App/List/dir:/a/b/Label"), nullptr);
    EXPECT_NE(view.widget_at("App/List/dir:/ab"), nullptr);
    EXPECT_EQ(state.nodes.size(), 5U);

    apply({add("App/List", box("dir:/a", {}, {text("Label", "again")}))});
    EXPECT_EQ(widget<WrapLabel>("App/List/dir:/a/Label")->text(), QStringLiteral("again"));
    RenderPatch other = replace("App/List", text("dir:/a/b", "other"));
    other.parent_path = "App/List/dir:/a";
    apply({other});
    EXPECT_EQ(laid_out("App/List"), (std::vector<std::string>{"dir:/a/b", "dir:/a", "dir:/ab"}));
    apply({removal("App/List/dir:/a/b")});
    EXPECT_EQ(laid_out("App/List"), (std::vector<std::string>{"dir:/a", "dir:/ab"}));
}

TEST_F(ViewPatches, WhatComesAndGoesInOneTurnNeverBecomesAWindow) {
    show(box("App"));
    apply({add("App", box("Short", {}, {text("Label", "l"), editor("Field")}))});
    apply({removal("App/Short")});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    for (QWidget* other : QApplication::topLevelWidgets())
        EXPECT_TRUE(other == window.get() || !other->isVisible());
}

TEST_F(ViewPatches, PatchesThatFitNothingDoNothing) {
    show(box("App", {}, {text("Leaf", "l")}));
    apply({removal("App/None"), update("App", text("None", "x")), editor_text("App/None", "x"),
           editor_text("App/Leaf", "x"), add("App/None", text("Child", "c")),
           add("App/Leaf", text("Child", "c"))});
    settle();
    for (const char* apart : {"App/None/Child", "App/Leaf/Child"}) {
        ASSERT_NE(view.widget_at(apart), nullptr) << apart;
        EXPECT_FALSE(view.widget_at(apart)->isVisible()) << apart;
    }
    QPointer<QWidget> child = view.widget_at("App/Leaf/Child");
    apply({removal("App/Leaf"), removal("App/None/Child")});
    settle();
    EXPECT_TRUE(child.isNull());
    EXPECT_EQ(state.nodes.size(), 1U);
}

TEST_F(ViewPatches, OpacityMultipliesDownTheTree) {
    const auto half = [](NodeStyle& style) { style.opacity = 0.5; };
    show(box("App", {}, {box("Outer", half, {box("Inner", half, {text("Label", "l")})})}));
    EXPECT_EQ(widget<VBoxWidget>("App/Outer")->opacity, 0.5);
    EXPECT_EQ(widget<WrapLabel>("App/Outer/Inner/Label")->opacity, 0.25);
    apply({update("App", box("Outer")), add("App/Outer/Inner", node("Icon", NodeKind::Icon))});
    EXPECT_EQ(widget<WrapLabel>("App/Outer/Inner/Label")->opacity, 0.5);
    EXPECT_EQ(widget<IconWidget>("App/Outer/Inner/Icon")->opacity, 0.5);
}

TEST_F(ViewPatches, PatchesThatComeInMeanwhileAreAppliedAfterwards) {
    const auto bar = [](double height) {
        return box("Bar", [height](NodeStyle& style) {
            style.overlay = "PinnedBottom";
            style.height = height;
        });
    };
    show(box("App", {}, {bar(20)}));
    bool while_applying = false;
    widget<VBoxWidget>("App/Bar")->on_resize = [&] {
        while_applying = state.applying;
        view.apply_patches({removal("App/Late")});
    };
    apply({update("App", bar(50)), add("App", text("Late", "l"), 1)});
    EXPECT_TRUE(while_applying);
    EXPECT_EQ(view.widget_at("App/Late"), nullptr);
    EXPECT_FALSE(state.applying);
}

} // namespace
} // namespace ViewTest
