#include "view_fixture.h"

namespace ViewTest {
namespace {

/// Runs the field's own focus change, as if the user had tabbed to `other`.
void leave(QLineEdit* other) {
    other->setFocus(Qt::TabFocusReason);
    settle();
}

class EditorInView : public ViewFixture {
protected:
    EditorInView() {
        app.on_input("App/Field", [this](const std::string& words) { heard.push_back(words); });
    }
    void show_fields(const std::string& words) {
        show(box("App", {}, {editor("Field", words), editor("Other"), box("Panel")}));
        line("App/Field")->setFocus();
    }
    std::vector<std::string> heard;
};

TEST_F(EditorInView, TypingNeverMovesTheCaret) {
    show_fields("abc");
    QLineEdit* field = line("App/Field");
    field->setCursorPosition(1);
    QTest::keyClicks(field, QStringLiteral("xy"));
    settle();
    EXPECT_EQ(field->text(), QStringLiteral("axybc"));
    apply({update("App", editor("Field", "abc"))});
    EXPECT_EQ(field->text(), QStringLiteral("axybc"));
    EXPECT_EQ(field->cursorPosition(), 3);
    EXPECT_EQ(heard, (std::vector<std::string>{"axbc", "axybc"}));
    EXPECT_EQ(app.input_value("App/Field"), "axybc");
}

TEST_F(EditorInView, OnlyAnotherTextOfTheApplicationOverwritesWhatIsTyped) {
    show_fields("abc");
    QLineEdit* field = line("App/Field");
    field->end(false);
    QTest::keyClicks(field, QStringLiteral("d"));
    apply({update("App", editor("Field", "abc"))});
    EXPECT_EQ(field->text(), QStringLiteral("abcd"));
    apply({editor_text("App/Field", "abc")});
    EXPECT_EQ(field->text(), QStringLiteral("abc"));
    apply({update("App", editor("Field", "new"))});
    EXPECT_EQ(field->text(), QStringLiteral("new"));
    EXPECT_EQ(heard, (std::vector<std::string>{"abcd"}));
}

TEST_F(EditorInView, AnInputValueShowsAtCreationOnlyAndOnlyIfThereIsOne) {
    app.set_input_value("App/Typed", "typed");
    app.set_input_value("App/Emptied", "");
    show(box(
        "App", {},
        {editor("Typed", "loaded"), editor("Emptied", "loaded"), editor("Untouched", "loaded")}));
    EXPECT_EQ(line("App/Typed")->text(), QStringLiteral("typed"));
    EXPECT_EQ(line("App/Emptied")->text(), QString());
    EXPECT_EQ(line("App/Untouched")->text(), QStringLiteral("loaded"));
    app.set_input_value("App/Untouched", "later");
    apply({update("App", editor("Untouched", "loaded", [](NodeStyle& s) { s.layout_grow = 1; }))});
    EXPECT_EQ(line("App/Untouched")->text(), QStringLiteral("loaded"));
    apply({replace("App", editor("Untouched", "loaded"))});
    EXPECT_EQ(line("App/Untouched")->text(), QStringLiteral("later"));
}

TEST_F(EditorInView, AnEmptiedFieldComesBackWhenTheUserLeavesIt) {
    show_fields("abc");
    line("App/Field")->selectAll();
    QTest::keyClick(line("App/Field"), Qt::Key_Delete);
    leave(line("App/Other"));
    EXPECT_EQ(line("App/Field")->text(), QStringLiteral("abc"));
    EXPECT_EQ(heard, (std::vector<std::string>{"", "abc"}));
}

// Each takes the focus from the emptied field by patches, not by the user.
TEST_F(EditorInView, AnEmptiedFieldThatLosesTheFocusToPatchesReportsNothing) {
    const auto wrapped = [](NodeStyle& style) { style.margin_left = 9; };
    const auto scrolling = [](NodeStyle& style) { style.layout_scroll = "Vertical"; };
    const auto bar = [](NodeStyle& style) { style.overlay = "BottomSheet"; };
    const std::pair<const char*, std::vector<RenderPatch>> cases[] = {
        {"rewrapped", {update("App/Form", editor("Field", "abc", wrapped))}},
        {"parent rebuilt", {update("App", box("Form", scrolling))}},
        {"floated", {update("App/Form", editor("Field", "abc", bar))}},
        {"removed with its parent", {removal("App/Form")}},
        {"replaced", {replace("App/Form", text("Field", "gone"))}},
    };
    for (const auto& [what, patches] : cases) {
        SCOPED_TRACE(what);
        app.on_input("App/Form/Field",
                     [this](const std::string& words) { heard.push_back(words); });
        show(box("App", {}, {box("Form", {}, {editor("Field", "abc"), editor("Other")})}));
        line("App/Form/Field")->setFocus();
        line("App/Form/Field")->selectAll();
        QTest::keyClick(line("App/Form/Field"), Qt::Key_Delete);
        ASSERT_TRUE(line("App/Form/Field")->hasFocus());
        heard.clear();
        apply(patches);
        settle();
        EXPECT_EQ(heard, std::vector<std::string>());
        apply({removal("App")});
        settle();
        app.set_input_value("App/Form/Field", "abc");
    }
}

TEST_F(EditorInView, AFieldKeepsFocusAndSelectionWhereItsPlaceChanges) {
    show(box("App", {}, {box("Form", {}, {editor("Field", "abcdef")})}));
    QLineEdit* field = line("App/Form/Field");
    field->setFocus();
    field->setSelection(1, 2);
    const auto narrow = [](NodeStyle& style) {
        style.margin_left = 9;
        style.max_width = 200;
    };
    apply({update("App/Form", editor("Field", "abcdef", narrow))});
    EXPECT_TRUE(field->hasFocus());
    apply({update("App", box("Form", [](NodeStyle& style) { style.layout_scroll = "Vertical"; }))});
    EXPECT_TRUE(field->hasFocus());
    apply({update("App/Form", editor("Field", "abcdef"))});
    settle();
    EXPECT_TRUE(field->hasFocus());
    EXPECT_TRUE(field->isVisible());
    EXPECT_EQ(field->selectedText(), QStringLiteral("bc"));
}

TEST_F(EditorInView, NothingIsReportedFromTheEndOfTheWindow) {
    show_fields("abc");
    line("App/Field")->selectAll();
    QTest::keyClick(line("App/Field"), Qt::Key_Delete);
    heard.clear();
    window.reset();
    settle();
    EXPECT_EQ(heard, std::vector<std::string>());
    EXPECT_FALSE(app.on_async_change);
    apply({add("", box("App"))});
    EXPECT_EQ(view.widget_at("App"), nullptr);
}

} // namespace
} // namespace ViewTest
