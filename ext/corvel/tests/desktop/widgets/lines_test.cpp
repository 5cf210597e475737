#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/markdown_widget.h"
#include "desktop/widgets/widget_support.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>

using namespace Corvel;

namespace {

std::string numbered(int from, int to) {
    std::string text;
    for (int i = from; i < to; ++i)
        text += "line " + std::to_string(i) + "\n";
    return text;
}

/// A field of many lines, shown; a log if it is read-only.
class Lines : public testing::Test {
protected:
    Lines() {
        field.resize(300, 200);
        field.on_text_changed = [this](const std::string& text) { reports.push_back(text); };
        field.show();
    }
    void apply(const std::string& text, bool read_only = false) {
        const NodeStyle style{.multiline = true, .read_only = read_only};
        apply_editor_style(&field, style, "Hint", text, !field.text_edit);
    }
    QTextEdit& edit() { return *field.text_edit; }
    QScrollBar& bar() { return *edit().verticalScrollBar(); }
    std::string text() { return edit().toPlainText().toStdString(); }
    /// Whether the end of a long log comes into view.
    bool ends_at(int line) {
        return QTest::qWaitFor(
            [&] {
                return bar().maximum() > 0 && bar().value() == bar().maximum() &&
                       edit().cursorForPosition(QPoint(2, 100)).blockNumber() > line - 20;
            },
            5000);
    }

    EditorWidget field;
    std::vector<std::string> reports;
};

} // namespace

TEST_F(Lines, OnlyEditsAreReportedAndARenderLeavesCaretViewAndUndoAlone) {
    const std::string loaded = "a\r\nb\xC2\xA0" + numbered(0, 100);
    apply(loaded);
    QTextCursor all(edit().document());
    all.select(QTextCursor::Document);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    all.mergeCharFormat(bold);
    field.push_text(loaded);
    EXPECT_TRUE(reports.empty()) << "neither a format nor the application's text is an edit";
    edit().moveCursor(QTextCursor::End);
    QTest::keyClicks(&edit(), QStringLiteral("!"));
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_TRUE(reports.back().ends_with("line 99\n!"));
    const int caret = edit().textCursor().position();
    const int scrolled = bar().value();
    EXPECT_GT(scrolled, 0);
    apply(loaded);
    apply(reports.back()); // as after a save
    EXPECT_EQ(edit().textCursor().position(), caret);
    EXPECT_EQ(bar().value(), scrolled);
    edit().undo();
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_TRUE(reports.back().ends_with("line 99\n"));
    apply("new");
    EXPECT_EQ(text(), "new");
    EXPECT_EQ(reports.size(), 2U);
}

TEST_F(Lines, ALogShowsItsEndUnlessItsReaderScrolledAway) {
    for (const int lines : {100, 200}) {
        apply(numbered(0, lines), true);
        EXPECT_TRUE(ends_at(lines));
    }
    bar().setValue(10);
    field.resize(300, 150);
    QTest::qWait(1);
    EXPECT_EQ(bar().value(), 10) << "a resize does not pull the reader away";
    field.hide();
    apply("other\n" + numbered(0, 20000), true);
    EXPECT_EQ(text(), "other\n" + numbered(0, 20000));
    field.show();
    EXPECT_TRUE(ends_at(20000)) << "new text does, also one that came while it was hidden";
    EXPECT_TRUE(reports.empty());
}

TEST_F(Lines, ALogGrowsAtTheCostOfWhatIsNew) {
    std::string log;
    QElapsedTimer timer;
    timer.start();
    for (int chunk = 0; chunk < 300; ++chunk) {
        log += numbered(chunk * 10, chunk * 10 + 10);
        apply(log, true);
    }
    EXPECT_LT(timer.elapsed(), 2000);
    EXPECT_EQ(text(), log);
    // A line end that was split between two texts stays one.
    apply("a\r", true);
    apply("a\r\nb", true);
    EXPECT_EQ(text(), "a\nb");
}

namespace {

/// A Markdown text in a scrolling panel of 400 by 200.
class Markdown : public testing::Test {
protected:
    Markdown() {
        area.setWidget(markdown);
        area.setWidgetResizable(true);
        area.resize(400, 200);
        area.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&area));
    }
    QScrollArea area;
    MarkdownWidget* markdown = new MarkdownWidget;
};

} // namespace

TEST_F(Markdown, IsAsHighAsItsTextAndLeavesTheWheelToThePanel) {
    std::string text;
    for (int i = 0; i < 300; ++i)
        text += "several words in a row ";
    markdown->set_source_text(text);
    int last = 0;
    for (const int width : {600, 400, 250}) {
        area.resize(width, 200);
        QTest::qWait(1);
        EXPECT_EQ(markdown->height(), int(std::ceil(markdown->document()->size().height())));
        EXPECT_GT(markdown->height(), last);
        EXPECT_EQ(markdown->verticalScrollBar()->maximum(), 0);
        last = markdown->height();
    }
    turn_wheel_over(*markdown->viewport());
    EXPECT_GT(area.verticalScrollBar()->value(), 0);
}

TEST_F(Markdown, ALinkToAFileLeavesTheTextAlone) {
    markdown->set_source_text("read [this](/etc/hostname) or [that](other.md)");
    const QString before = markdown->toPlainText();
    for (const char* target : {"/etc/hostname", "other.md", "#part"}) {
        markdown->setSource(QUrl(QLatin1String(target)));
        EXPECT_EQ(markdown->toPlainText(), before);
    }
}
