#include "view_fixture.h"

#include <QTextEdit>

namespace ViewTest {
namespace {

using Words = std::vector<std::string>;

/// "App/Form" with the fields "Field", which has the focus and its caret at the end, and "Other".
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
    void show_emptied() {
        show_fields("abc");
        field()->selectAll();
        type(Qt::Key_Delete);
        EXPECT_EQ(std::exchange(heard, {}), Words{""});
    }
    void type(Qt::Key key) { QTest::keyClick(field(), key); }
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
    type(Qt::Key_X);
    render("abc", {.font_size = 20});
    EXPECT_EQ(shown(), "axbc");
    EXPECT_EQ(app.input_value("App/Form/Field"), "axbc");
    render("axbc"); // what the field holds already, as after a save
    apply({editor_text("App/Form/Field", "axbc")});
    EXPECT_EQ(field()->cursorPosition(), 2);
    EXPECT_EQ(heard, Words{"axbc"});
}

TEST_F(EditorInView, OnlyAnotherTextOfTheApplicationOverwritesWhatIsTyped) {
    show_fields("abc");
    type(Qt::Key_D);
    render("abc");
    EXPECT_EQ(shown(), "abcd");
    apply({editor_text("App/Form/Field", "abc")}); // what discarding does
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
    app.set_input_value("App/Untouched", "later");
    apply({update("App", untouched)});
    EXPECT_EQ(line("App/Untouched")->text(), QStringLiteral("loaded"));
    apply({replace("App", untouched)});
    EXPECT_EQ(line("App/Untouched")->text(), QStringLiteral("later"));
}

TEST_F(EditorInView, AnEmptiedFieldComesBackWhenTheUserLeavesIt) {
    show_emptied();
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
        show_emptied();
        apply({patch});
        EXPECT_EQ(heard, Words()) << what;
    }
    show_emptied();
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
    EXPECT_TRUE(same->hasFocus() && same->isVisible());
    EXPECT_EQ(same->selectedText(), QStringLiteral("bc"));
}

TEST_F(EditorInView, ReadOnlySecretLongAndManyLined) {
    show_fields("abc", {.secret = true, .read_only = true});
    EXPECT_EQ(field()->echoMode(), QLineEdit::Password);
    type(Qt::Key_X);
    EXPECT_EQ(shown(), "abc");
    const std::string words(100000, 'x');
    render(words);
    EXPECT_EQ(field()->echoMode(), QLineEdit::Normal);
    field()->end(false);
    type(Qt::Key_Y);
    EXPECT_EQ(heard, Words{words + "y"}) << "kept whole";
    render(words, {.multiline = true});
    EXPECT_EQ(widget<EditorWidget>("App/Form/Field")->text_edit->toPlainText().toStdString(),
              words + "y");
}

} // namespace
} // namespace ViewTest
