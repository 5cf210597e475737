#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/log_view.h"
#include "desktop/widgets/widget_support.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QClipboard>
#include <QScrollBar>

#include <random>

using namespace Corvel;

namespace {

std::string rows_of(const LogLines& lines, std::string_view text) {
    std::string all;
    for (const LogLines::Range& row : lines.rows(text, 0, lines.row_count() + 1))
        all += "[" + std::string(text.substr(row.begin, row.end - row.begin)) + "]";
    return all;
}

std::string broken(const std::string& text, std::size_t columns) {
    LogLines lines;
    lines.set_columns({}, columns);
    lines.grow(text);
    return rows_of(lines, text);
}

std::string random_text(std::mt19937& random) {
    static const std::string pieces[] = {"a",  "word",       " ",  "\n",  "\r\n",
                                         "\r", "\t",         "/",  "-",   "\u00fc",
                                         "漢", "\U0001f600", "\n", "xyz", "\xff"};
    std::string text;
    for (std::size_t count = random() % 40; count > 0; --count)
        text += pieces[random() % std::size(pieces)];
    return text;
}

} // namespace

TEST(LogLines, BreaksAtBlanksHyphensAndSlashesOrAnywhere) {
    EXPECT_EQ(broken("", 5), "[]");
    EXPECT_EQ(broken("one two three\r\nfour\rfive\n", 8), "[one two ][three][four][five][]");
    EXPECT_EQ(broken("a/bb/ccc-ddd", 5), "[a/bb/][ccc-][ddd]");
    EXPECT_EQ(broken("abcdefgh", 3), "[abc][def][gh]");
    EXPECT_EQ(broken("ab   cd", 3), "[ab   ][cd]") << "blanks hang over the edge";
    EXPECT_EQ(broken("漢字漢字", 4), "[漢字][漢字]");
    EXPECT_EQ(broken("漢", 1), "[漢]");
    EXPECT_EQ(broken("a\tb c", 9), "[a\tb ][c]");
    EXPECT_EQ(broken("long enough", 0), "[long enough]");
}

TEST(LogLines, GrowingAndOtherWidthsAgreeWithATextReadAtOnce) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        LogLines grown;
        std::string text;
        for (int step = 0; step < 8; ++step) {
            text += random_text(random);
            grown.grow(text);
            const std::size_t columns = random() % 12;
            grown.set_columns(text, columns);
            ASSERT_EQ(rows_of(grown, text), broken(text, columns)) << "round " << round;
        }
        const auto rows = grown.rows(text, 0, grown.row_count() + 1);
        ASSERT_EQ(rows.size(), grown.row_count());
        for (std::size_t row = 0; row < rows.size(); ++row) {
            ASSERT_EQ(grown.rows(text, row, 1).at(0).begin, rows[row].begin);
            if (rows[row].begin < rows[row].end) {
                ASSERT_EQ(grown.row_at(text, rows[row].begin), row);
            }
        }
        const QString all = QString::fromStdString(text);
        if (text.find('\xff') == std::string::npos) {
            ASSERT_EQ(grown.units(text), std::size_t(all.size()));
            for (qsizetype unit = 0; unit <= all.size(); ++unit)
                if (unit == all.size() || !all[unit].isLowSurrogate()) {
                    const std::size_t byte = grown.byte_of_unit(text, std::size_t(unit));
                    ASSERT_EQ(byte, std::size_t(all.left(unit).toUtf8().size()));
                    ASSERT_EQ(grown.units_before(text, byte), std::size_t(unit));
                }
        }
    }
}

namespace {

/// A log in an editor, shown.
class Log : public testing::Test {
protected:
    Log() {
        field.resize(300, 200);
        apply();
        field.show();
    }
    void apply(bool wrap = true) {
        NodeStyle style{.multiline = true, .read_only = true, .wrap = wrap};
        style.font_family = "monospace";
        apply_editor_style(&field, style, "Nothing yet", text, !field.log_view);
        QApplication::processEvents();
    }
    void add(int count) {
        for (int i = 0; i < count; ++i)
            text.append("line " + std::to_string(++last) + " and some more words to be wrapped\n");
        apply();
    }
    LogView& view() { return *field.log_view; }
    QScrollBar& bar() { return *view().verticalScrollBar(); }
    /// The text of the row at the top.
    std::string top() {
        const std::string_view all = view().text().view();
        const auto row = view().lines().rows(all, std::size_t(bar().value()), 1).at(0);
        return std::string(all.substr(row.begin, row.end - row.begin));
    }

    EditorWidget field;
    GrowingText text;
    int last = 0;
};

} // namespace

TEST_F(Log, SharesTheApplicationsTextAsItGrows) {
    add(20);
    const std::size_t lines = view().lines().line_count();
    EXPECT_EQ(view().text().view().data(), text.view().data());
    const GrowingText earlier = text;
    add(1);
    EXPECT_EQ(view().text().view().data(), text.view().data());
    EXPECT_EQ(view().lines().line_count(), lines + 1);
    EXPECT_EQ(field.shown_text().toStdString(), text.get());
    EXPECT_LT(earlier.size(), text.size());
    EXPECT_EQ(earlier.get(), text.get().substr(0, earlier.size())) << "a copy keeps what it was";
}

TEST_F(Log, FollowsItsEndUnlessItsReaderScrolledAway) {
    add(100);
    EXPECT_GT(bar().maximum(), 100) << "lines are wrapped";
    EXPECT_EQ(bar().value(), bar().maximum());
    field.resize(200, 150);
    EXPECT_EQ(bar().value(), bar().maximum());
    bar().setValue(41);
    const std::string read = top();
    add(50);
    EXPECT_EQ(top(), read);
    for (const int width : {500, 260, 200}) {
        field.resize(width, 150);
        EXPECT_NE(top().substr(0, 4), "") << width;
    }
    EXPECT_EQ(top(), read) << "what is at the top stays there at any width";
    apply(false);
    EXPECT_GT(view().horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(view().lines().row_count(), view().lines().line_count());
    text = "a new build";
    apply();
    EXPECT_EQ(bar().maximum(), 0);
    add(100);
    EXPECT_EQ(bar().value(), bar().maximum()) << "another text is followed again";
}

TEST_F(Log, IsSelectedCopiedAndSaidToBeAText) {
    text = "first words\nsecond \u00fcber line\n";
    apply();
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&view());
    ASSERT_NE(told, nullptr);
    EXPECT_EQ(told->role(), QAccessible::EditableText);
    EXPECT_TRUE(told->state().readOnly);
    EXPECT_EQ(told->text(QAccessible::Name), QStringLiteral("Nothing yet"));
    QAccessibleTextInterface* letters = told->textInterface();
    ASSERT_NE(letters, nullptr);
    EXPECT_EQ(letters->characterCount(), 29);
    EXPECT_EQ(letters->text(19, 23), QStringLiteral("\u00fcber"));

    const QPoint on_uber = letters->characterRect(20).center();
    EXPECT_EQ(letters->offsetAtPoint(letters->characterRect(20).topLeft() + QPoint(1, 2)), 20);
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, {},
                       view().viewport()->mapFromGlobal(on_uber));
    EXPECT_EQ(view().selected_text(), QStringLiteral("\u00fcber"));
    const QImage marked = picture_of(view());
    text.append("third");
    apply();
    EXPECT_EQ(view().selected_text(), QStringLiteral("\u00fcber")) << "it stays as the log grows";
    view().select(0, 0);
    EXPECT_NE(picture_of(view()), marked);

    QTest::keySequence(&view(), QKeySequence::SelectAll);
    QTest::keySequence(&view(), QKeySequence::Copy);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), text.get());
}

TEST_F(Log, HandsItsTextOnWhenItBecomesAFieldAndBack) {
    add(3);
    NodeStyle style{.multiline = true};
    style.font_family = "monospace";
    apply_editor_style(&field, style, "", text, false);
    EXPECT_FALSE(field.is_log);
    EXPECT_EQ(field.shown_text().toStdString(), text.get());
    apply();
    EXPECT_EQ(field.control(), &view());
    EXPECT_EQ(field.shown_text().toStdString(), text.get());
}
