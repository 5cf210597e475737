#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/widget_support.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFontInfo>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QVBoxLayout>

using namespace Corvel;

namespace {

SharedStyle lines_style(bool read_only = false) {
    return styled([&](NodeStyle& s) {
        s.multiline = true;
        s.read_only = read_only;
        s.text_color = "#102030";
        s.font_family = "monospace";
        s.padding_left = s.padding_top = s.padding_right = s.padding_bottom = 8;
    });
}

std::string numbered(int from, int to) {
    std::string text;
    for (int i = from; i < to; ++i)
        text += "line " + std::to_string(i) + "\n";
    return text;
}

class Lines : public testing::Test {
protected:
    Lines() {
        field.resize(300, 200);
        field.on_text_changed = [this](const std::string& text) { reports.push_back(text); };
    }
    void apply(const std::string& text, bool read_only = false, bool first = false) {
        apply_editor_style(&field, lines_style(read_only), "Hint", text, first);
    }
    QTextEdit& edit() { return *field.text_edit; }
    std::string text() { return edit().toPlainText().toStdString(); }
    bool at_end() {
        QScrollBar* bar = edit().verticalScrollBar();
        return bar->maximum() > 0 && bar->value() == bar->maximum();
    }

    EditorWidget field;
    std::vector<std::string> reports;
};

} // namespace

TEST_F(Lines, TheStyleReachesTheControl) {
    apply("text", false, true);
    EXPECT_FALSE(field.line_edit->isVisibleTo(&field));
    EXPECT_TRUE(edit().isVisibleTo(&field));
    EXPECT_EQ(edit().geometry(), QRect(8, 8, 284, 184));
    EXPECT_TRUE(QFontInfo(edit().font()).fixedPitch());
    EXPECT_EQ(edit().font().pixelSize(), 14);
    EXPECT_EQ(edit().lineWrapMode(), QTextEdit::WidgetWidth);
    EXPECT_EQ(edit().horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    SharedStyle unwrapped = lines_style();
    unwrapped.edit().wrap = false;
    apply_editor_style(&field, unwrapped, "Hint", "text", false);
    EXPECT_EQ(edit().lineWrapMode(), QTextEdit::NoWrap);
    EXPECT_EQ(edit().horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    EXPECT_EQ(edit().placeholderText().toStdString(), "Hint");
    const int line = QFontMetrics(edit().font()).height();
    EXPECT_EQ(field.sizeHint(), QSize(0, 3 * line + 16 + 8));
}

TEST_F(Lines, OnlyEditsAreReported) {
    apply("a\r\nb\xC2\xA0"
          "c",
          false, true);
    EXPECT_TRUE(reports.empty());
    QTextCursor all(edit().document());
    all.select(QTextCursor::Document);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    all.mergeCharFormat(bold);
    EXPECT_TRUE(reports.empty()) << "a change of format is no edit";
    field.push_text("pushed");
    EXPECT_TRUE(reports.empty());
    edit().moveCursor(QTextCursor::End);
    QTest::keyClicks(&edit(), QStringLiteral("!"));
    EXPECT_EQ(reports, std::vector<std::string>{"pushed!"});
}

TEST_F(Lines, ATextThatItHoldsAlreadyMovesNeitherCaretNorView) {
    field.show();
    apply(numbered(0, 100), false, true);
    edit().moveCursor(QTextCursor::End);
    QTest::keyClicks(&edit(), QStringLiteral("x"));
    const int caret = edit().textCursor().position();
    const int scrolled = edit().verticalScrollBar()->value();
    EXPECT_GT(scrolled, 0);
    apply(numbered(0, 100) + "x");
    field.push_text(numbered(0, 100) + "x");
    EXPECT_EQ(edit().textCursor().position(), caret);
    EXPECT_EQ(edit().verticalScrollBar()->value(), scrolled);
    apply(numbered(0, 50));
    EXPECT_EQ(text(), numbered(0, 50));
    apply(numbered(0, 50));
    EXPECT_EQ(reports.size(), 1U);
}

TEST_F(Lines, UndoSurvivesARenderAndIsReported) {
    apply("start", false, true);
    QTest::keyClicks(&edit(), QStringLiteral("ab"));
    apply("start");
    edit().undo();
    EXPECT_EQ(text(), "start");
    EXPECT_EQ(reports.back(), "start");
}

TEST_F(Lines, ALogShowsItsEndAndGrowsByAppending) {
    field.show();
    apply(numbered(0, 100), true, true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return at_end(); }, 2000));
    QSignalSpy replaced(edit().document(), &QTextDocument::contentsChange);
    apply(numbered(0, 200), true);
    EXPECT_EQ(text(), numbered(0, 200));
    ASSERT_EQ(replaced.count(), 1);
    EXPECT_EQ(replaced[0][1].toInt(), 0) << "nothing removed";
    EXPECT_TRUE(QTest::qWaitFor([&] { return at_end(); }, 2000));

    edit().verticalScrollBar()->setValue(10);
    field.resize(300, 150);
    QTest::qWait(1);
    EXPECT_EQ(edit().verticalScrollBar()->value(), 10) << "a resize does not pull the reader away";
    apply("other\n" + numbered(0, 100), true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return at_end(); }, 2000)) << "new text does";
    EXPECT_EQ(text(), "other\n" + numbered(0, 100));
    EXPECT_TRUE(reports.empty());
}

TEST_F(Lines, ALogFilledWhileHiddenShowsItsEndLater) {
    for (const int lines : {60, 20000}) {
        EditorWidget hidden;
        hidden.resize(300, 200);
        apply_editor_style(&hidden, lines_style(true), "", numbered(0, lines), true);
        hidden.show();
        QScrollBar* bar = hidden.text_edit->verticalScrollBar();
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                return bar->maximum() > 0 && bar->value() == bar->maximum() &&
                       hidden.text_edit->cursorForPosition(QPoint(2, 150)).blockNumber() >
                           lines - 20;
            },
            5000))
            << lines;
    }
}

TEST_F(Lines, ALongLogCostsWhatIsNew) {
    field.show();
    apply("", true, true);
    std::string log;
    QElapsedTimer timer;
    timer.start();
    for (int chunk = 0; chunk < 300; ++chunk) {
        log += numbered(chunk * 10, chunk * 10 + 10);
        apply(log, true);
    }
    EXPECT_LT(timer.elapsed(), 2000);
    EXPECT_EQ(text(), log);
}

TEST_F(Lines, LineEndsSplitBetweenTwoTextsStayOne) {
    apply("a\r", true, true);
    apply("a\r\nb", true);
    EXPECT_EQ(text(), "a\nb");
}

TEST_F(Lines, AFieldThatChangesItsKindKeepsItsText) {
    apply_editor_style(&field, styled([](NodeStyle&) {}), "Hint", "first", true);
    QTest::keyClick(field.line_edit, Qt::Key_End);
    QTest::keyClicks(field.line_edit, QStringLiteral("!"));
    apply("first");
    EXPECT_EQ(text(), "first!");
    EXPECT_EQ(reports, std::vector<std::string>{"first!"});
}
