#include "view_fixture.h"

#include <QTextEdit>

namespace ViewTest {
namespace {

using Words = std::vector<std::string>;

/// "App/Form" with the fields "Field", which has the focus, and "Other".
class EditorInView : public ViewFixture {
protected:
    void show_fields(const std::string& words, NodeStyle style = {}) {
        app.set_input_value("App/Form/Field", words);
        app.on_input("App/Form/Field",
                     [this](const std::string& typed) { heard.push_back(typed); });
        show(box("App", {}, {box("Form", {}, {editor("Field", words, style), editor("Other")})}));
        field()->setFocus();
        field()->end(false);
        heard.clear();
    }
    void empty_field() {
        field()->selectAll();
        QTest::keyClick(field(), Qt::Key_Delete);
        EXPECT_EQ(heard, Words{""});
        heard.clear();
    }
    void render(const std::string& words, NodeStyle style = {}) {
        apply({update("App/Form", editor("Field", words, std::move(style)))});
    }
    QLineEdit* field() { return line("App/Form/Field"); }
    std::string shown() { return field()->text().toStdString(); }
    Words heard;
};

TEST_F(EditorInView, TypingNeverMovesTheCaretAndSurvivesARenderOfTheOldText) {
    show_fields("abc");
    field()->setCursorPosition(1);
    QTest::keyClicks(field(), QStringLiteral("xy"));
    render("abc", {.font_size = 20});
    EXPECT_EQ(shown(), "axybc");
    EXPECT_EQ(field()->cursorPosition(), 3);
    EXPECT_EQ(heard, (Words{"axbc", "axybc"}));
    EXPECT_EQ(app.input_value("App/Form/Field"), "axybc");
    // The text that the field holds already, as after a save.
    render("axybc");
    apply({editor_text("App/Form/Field", "axybc")});
    EXPECT_EQ(field()->cursorPosition(), 3);
    EXPECT_EQ(heard.size(), 2U);
}

TEST_F(EditorInView, OnlyAnotherTextOfTheApplicationOverwritesWhatIsTyped) {
    show_fields("abc");
    QTest::keyClicks(field(), QStringLiteral("d"));
    render("abc");
    EXPECT_EQ(shown(), "abcd");
    apply({editor_text("App/Form/Field", "abc")}); // what discarding does
    EXPECT_EQ(shown(), "abc");
    render("abc");
    EXPECT_EQ(shown(), "abc");
    render("new");
    EXPECT_EQ(shown(), "new");
    EXPECT_EQ(heard, Words{"abcd"}) << "text from the application is no edit";
}

TEST_F(EditorInView, AnInputValueShowsAtCreationOnlyAndOnlyIfThereIsOne) {
    app.set_input_value("App/Typed", "typed");
    app.set_input_value("App/Emptied", "");
    const RenderNode untouched = editor("Untouched", "loaded");
    show(box("App", {}, {editor("Typed", "loaded"), editor("Emptied", "loaded"), untouched}));
    EXPECT_EQ(line("App/Typed")->text(), QStringLiteral("typed"));
    EXPECT_EQ(line("App/Emptied")->text(), QString());
    EXPECT_EQ(line("App/Untouched")->text(), QStringLiteral("loaded"));
    app.set_input_value("App/Untouched", "later");
    apply({update("App", untouched)});
    EXPECT_EQ(line("App/Untouched")->text(), QStringLiteral("loaded"));
    apply({replace("App", untouched)});
    EXPECT_EQ(line("App/Untouched")->text(), QStringLiteral("later"));
}

TEST_F(EditorInView, AnEmptiedFieldComesBackWhenTheUserLeavesIt) {
    show_fields("abc");
    empty_field();
    QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
    QCoreApplication::sendEvent(field(), &menu);
    EXPECT_EQ(shown(), "") << "its own menu is not leaving it";
    line("App/Form/Other")->setFocus();
    EXPECT_EQ(shown(), "abc");
    EXPECT_EQ(heard, Words{"abc"});
    render("");
    field()->setFocus();
    line("App/Form/Other")->setFocus();
    EXPECT_EQ(shown(), "") << "nothing to bring back";
}

// Each takes the focus from the emptied field by patches, not by the user.
TEST_F(EditorInView, AnEmptiedFieldThatLosesTheFocusToPatchesReportsNothing) {
    const std::pair<const char*, RenderPatch> cases[] = {
        {"rewrapped", update("App/Form", editor("Field", "abc", {.margin_left = 9}))},
        {"parent rebuilt", update("App", box("Form", {.layout_scroll = "Vertical"}))},
        {"floated", update("App/Form", editor("Field", "abc", {.overlay = "BottomSheet"}))},
        {"dialog opened", add("App", box("Dialog", {.width = 50, .overlay = "Modal"}))},
        {"removed with its parent", removal("App/Form")},
        {"replaced", replace("App/Form", text("Field", "gone"))},
    };
    for (const auto& [what, patch] : cases) {
        SCOPED_TRACE(what);
        show_fields("abc");
        empty_field();
        ASSERT_TRUE(field()->hasFocus());
        apply({patch});
        EXPECT_EQ(heard, Words());
    }
    show_fields("abc");
    empty_field();
    window.reset(); // the end of the program
    settle();
    EXPECT_EQ(heard, Words());
    EXPECT_FALSE(app.on_async_change);
    apply({add("", box("App"))});
    EXPECT_EQ(view.widget_at("App"), nullptr);
}

TEST_F(EditorInView, AFieldKeepsFocusAndSelectionWhereItsPlaceChanges) {
    show_fields("abcdef");
    QLineEdit* const same = field();
    same->setSelection(1, 2);
    render("abcdef", {.margin_left = 9, .max_width = 200});
    apply({update("App", box("Form", {.layout_scroll = "Vertical"}))});
    render("abcdef");
    EXPECT_EQ(field(), same);
    EXPECT_TRUE(same->hasFocus());
    EXPECT_TRUE(same->isVisible());
    EXPECT_EQ(same->selectedText(), QStringLiteral("bc"));
}

TEST_F(EditorInView, AVeryLongTextIsKeptWhole) {
    const std::string words(100000, 'x');
    show_fields(words);
    QTest::keyClicks(field(), QStringLiteral("y"));
    EXPECT_EQ(heard, Words{words + "y"});
}

TEST_F(EditorInView, AReadOnlyFieldCannotBeEditedAndASecretOneShowsNothing) {
    show_fields("abc", {.secret = true, .read_only = true});
    EXPECT_EQ(field()->echoMode(), QLineEdit::Password);
    QTest::keyClicks(field(), QStringLiteral("x"));
    EXPECT_EQ(shown(), "abc");
    render("abc");
    EXPECT_EQ(field()->echoMode(), QLineEdit::Normal);
    field()->end(false);
    QTest::keyClicks(field(), QStringLiteral("x"));
    EXPECT_EQ(heard, Words{"abcx"});
}

TEST_F(EditorInView, AFieldOfOneLineThatGetsManyKeepsItsText) {
    show_fields("first");
    QTest::keyClicks(field(), QStringLiteral("!"));
    render("first", {.multiline = true});
    const EditorWidget* editor = widget<EditorWidget>("App/Form/Field");
    EXPECT_EQ(editor->text_edit->toPlainText(), QStringLiteral("first!"));
    EXPECT_EQ(heard, Words{"first!"});
}

} // namespace
} // namespace ViewTest
