#include "desktop/widgets/code_edit.h"
#include "widget_support.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>

#include <map>

namespace WidgetTest {
namespace {

using Corvel::CodeEdit;

/// One letter for each letter of a line: equal ones look alike, "." is plain.
std::string looks(const CodeEdit& edit, int line) {
    const QTextBlock block = edit.document()->findBlockByNumber(line);
    std::string shown(std::size_t(block.text().size()), '.');
    std::map<std::string, char> letters;
    for (const QTextLayout::FormatRange& range : block.layout()->formats()) {
        const QColor color = range.format.foreground().color();
        const std::string look =
            color.name(QColor::HexArgb).toStdString() + std::to_string(range.format.fontWeight());
        const char letter = letters.try_emplace(look, char('a' + letters.size())).first->second;
        for (int i = range.start; i < range.start + range.length; ++i)
            shown[std::size_t(i)] = letter;
    }
    return shown;
}

struct CodeEditor : testing::Test {
    CodeEditor() {
        edit.resize(400, 120);
        edit.show();
        edit.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&edit));
    }
    void set(const char* language, const char* text) {
        edit.set_language(QString::fromLatin1(language), Qt::white);
        edit.setPlainText(QString::fromUtf8(text));
        QCoreApplication::processEvents();
    }
    std::string chosen() const { return edit.textCursor().selectedText().toStdString(); }

    CodeEdit edit{nullptr};
};

TEST_F(CodeEditor, ColoursWhatALanguageTellsApart) {
    set("json", R"( {"a\"b" : "c", "d": -1e5, "e": [true]}
"open)");
    EXPECT_EQ(looks(edit, 0), ".abbbbbb.a.ccca.bbba.dddda.bbba.addddaa");
    EXPECT_EQ(looks(edit, 1), "aaaaa");
    set("markdown", "# Title\nso `code` and **bold** [x](y)\n```\n# none\n```\n- [`\n```\nopen");
    EXPECT_EQ(looks(edit, 0), "aaaaaaa");
    EXPECT_EQ(looks(edit, 1), "...aaaaaa.....bbbbbbbb...cccc");
    EXPECT_EQ(looks(edit, 3), "aaaaaa");
    EXPECT_EQ(looks(edit, 5), "a...");
    EXPECT_EQ(looks(edit, 7), "aaaa");
    set("log", "fine\nError: not fine");
    EXPECT_EQ(looks(edit, 0), "....");
    EXPECT_EQ(looks(edit, 1), "aaaaaaaaaaaaaaa");
    set("", "\"a\": 1");
    EXPECT_EQ(looks(edit, 0), "......");
}

TEST_F(CodeEditor, NumbersItsLinesAndMarksOne) {
    set("", "a");
    const int plain = edit.viewport()->x();
    set("json", "a");
    const int narrow = edit.viewport()->x();
    EXPECT_GT(narrow, plain);
    edit.setPlainText(QStringLiteral("x\n").repeated(1000));
    EXPECT_GT(edit.viewport()->x(), narrow);
    edit.clearFocus();
    edit.mark_line(900);
    ASSERT_EQ(edit.extraSelections().size(), 1);
    EXPECT_EQ(edit.extraSelections()[0].cursor.blockNumber(), 899);
    const QTextCursor seen = edit.cursorForPosition(QPoint(5, 5));
    EXPECT_NEAR(seen.blockNumber(), 899, 10) << "scrolled to";
    edit.mark_line(2000);
    EXPECT_TRUE(edit.extraSelections().isEmpty());
    edit.mark_line(0);
    EXPECT_TRUE(edit.extraSelections().isEmpty());
}

TEST_F(CodeEditor, FindsWords) {
    set("json", "One two one\nthree ONE");
    edit.setFocus();
    QTest::keyClick(&edit, Qt::Key_F, Qt::ControlModifier);
    auto* field = edit.findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, QStringLiteral("one"));
    EXPECT_EQ(edit.textCursor().selectionStart(), 0);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(edit.textCursor().selectionStart(), 8);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(chosen(), "ONE");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(edit.textCursor().selectionStart(), 0) << "around the end";
    QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(chosen(), "ONE");
    field->setText(QStringLiteral("nowhere"));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(chosen(), "ONE");
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_FALSE(field->isVisible());
    EXPECT_TRUE(edit.hasFocus());
}

} // namespace
} // namespace WidgetTest
