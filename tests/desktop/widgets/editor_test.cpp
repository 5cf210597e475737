#include "desktop/media/asset_paths.h"
#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/icon_widget.h"
#include "desktop/widgets/widget_support.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QAbstractAnimation>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QVBoxLayout>
#include <QVariantAnimation>

using namespace Corvel;

namespace {

SharedStyle field_style(double font_size = 14) {
    return styled([&](NodeStyle& s) {
        s.text_color = "#102030";
        s.font_size = font_size;
        s.border_thickness = 1;
        s.padding_left = s.padding_right = 12;
        s.padding_top = s.padding_bottom = 6;
    });
}

/// A window with two fields, the first under test.
class Field : public testing::Test {
protected:
    Field() {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&field);
        column->addWidget(&other);
        field.on_text_changed = [this](const std::string& text) { reports.push_back(text); };
        apply(field_style(), "", true);
        apply_editor_style(&other, field_style(), "Other", "", true);
        window.resize(400, 160);
    }

    void apply(const SharedStyle& style, const std::string& text, bool first = false) {
        apply_editor_style(&field, style, "Title", text, first);
    }

    void show() {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    void leave() { other.line_edit->setFocus(); }
    std::string text() const { return field.line_edit->text().toStdString(); }

    QWidget window;
    EditorWidget field;
    EditorWidget other;
    std::vector<std::string> reports;
};

} // namespace

TEST_F(Field, TypingIsReportedAndSurvivesARenderOfTheOldText) {
    show();
    apply(field_style(), "abc");
    EXPECT_EQ(text(), "abc");
    EXPECT_TRUE(reports.empty()) << "text from the application is no edit";
    field.line_edit->setFocus();
    field.line_edit->setCursorPosition(1);
    QTest::keyClicks(field.line_edit, QStringLiteral("xy"));
    EXPECT_EQ(reports, (std::vector<std::string>{"axbc", "axybc"}));
    apply(field_style(), "abc");
    EXPECT_EQ(text(), "axybc");
    EXPECT_EQ(field.line_edit->cursorPosition(), 3);
    field.line_edit->setSelection(1, 2);
    apply(field_style(20), "abc");
    EXPECT_EQ(field.line_edit->selectedText().toStdString(), "xy") << "a new style changes no text";
    apply(field_style(), "new");
    EXPECT_EQ(text(), "new");
}

TEST_F(Field, ATextThatItHoldsAlreadyMovesNoCaret) {
    show();
    apply(field_style(), "old");
    field.line_edit->setFocus();
    QTest::keyClicks(field.line_edit, QStringLiteral("er"));
    field.line_edit->setCursorPosition(2);
    apply(field_style(), "older");
    field.push_text("older");
    EXPECT_EQ(field.line_edit->cursorPosition(), 2);
    field.push_text("pushed");
    EXPECT_EQ(text(), "pushed");
    apply(field_style(), "older");
    EXPECT_EQ(text(), "pushed") << "the application's text is the one seen last";
    EXPECT_EQ(reports.size(), 2U);
}

TEST_F(Field, AnEmptiedFieldComesBackWhenLeft) {
    show();
    apply(field_style(), "kept");
    field.line_edit->setFocus();
    field.line_edit->selectAll();
    QTest::keyClick(field.line_edit, Qt::Key_Backspace);
    EXPECT_EQ(reports, std::vector<std::string>{""});
    QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
    QCoreApplication::sendEvent(field.line_edit, &menu);
    EXPECT_EQ(text(), "") << "its own menu is not leaving it";
    leave();
    EXPECT_EQ(text(), "kept");
    EXPECT_EQ(reports, (std::vector<std::string>{"", "kept"}));

    apply(field_style(), "");
    field.line_edit->setFocus();
    leave();
    EXPECT_EQ(text(), "") << "nothing to bring back";
}

TEST_F(Field, AMutedFieldTellsAndRestoresNothing) {
    show();
    apply(field_style(), "kept");
    field.line_edit->setFocus();
    field.line_edit->selectAll();
    field.muted = true;
    QTest::keyClick(field.line_edit, Qt::Key_Backspace);
    leave();
    EXPECT_EQ(text(), "");
    EXPECT_TRUE(reports.empty());
}

TEST_F(Field, AnEmptiedFieldTakenOutOfTheWindowWhileMutedIsSilent) {
    show();
    auto* doomed = new EditorWidget(&window);
    std::vector<std::string> heard;
    apply_editor_style(doomed, field_style(), "Doomed", "kept", true);
    doomed->on_text_changed = [&](const std::string& t) { heard.push_back(t); };
    doomed->show();
    doomed->line_edit->setFocus();
    doomed->line_edit->selectAll();
    QTest::keyClick(doomed->line_edit, Qt::Key_Backspace);
    heard.clear();
    doomed->muted = true;
    doomed->setParent(nullptr);
    delete doomed;
    EXPECT_TRUE(heard.empty());
}

TEST_F(Field, AReportMayEndTheField) {
    auto* doomed = new EditorWidget;
    const QPointer<EditorWidget> alive(doomed);
    apply_editor_style(doomed, field_style(), "", "", true);
    doomed->on_text_changed = [&](const std::string&) { doomed->on_text_changed = nullptr; };
    QTest::keyClicks(doomed->line_edit, QStringLiteral("a"));
    EXPECT_TRUE(alive);
    delete doomed;
}

TEST_F(Field, TheLabelRisesWithFocusOrTextAndFallsWithout) {
    show();
    leave();
    EXPECT_EQ(field.label_progress, 0);
    EXPECT_EQ(field.floating_label->text().toStdString(), "Title");
    EXPECT_EQ(field.floating_label->pos(), field.label_rest);
    EXPECT_EQ(field.floating_label->font().pixelSize(), 14);
    field.line_edit->setFocus();
    EXPECT_TRUE(field.label_raised);
    EXPECT_EQ(field.label_animation->state(), QAbstractAnimation::Running);
    EXPECT_EQ(field.label_animation->duration(), 150);
    EXPECT_TRUE(QTest::qWaitFor([&] { return field.label_progress == 1; }, 2000));
    EXPECT_EQ(field.floating_label->pos(), field.label_up);
    EXPECT_EQ(field.floating_label->font().pixelSize(), 10);
    EXPECT_TRUE(field.floating_label->font().italic());
    leave();
    EXPECT_TRUE(QTest::qWaitFor([&] { return field.label_progress == 0; }, 2000));
    field.push_text("x");
    EXPECT_EQ(field.label_progress, 1) << "at once";
    apply(field_style(), "y");
    EXPECT_EQ(field.label_progress, 1);
}

TEST_F(Field, LabelAndTextNeverMeet) {
    for (const double size : {10.0, 12.0, 14.0, 16.0, 20.0, 28.0}) {
        apply(field_style(size), "text");
        field.setFixedHeight(field.sizeHint().height());
        field.setFixedWidth(300);
        show();
        QTest::qWait(1);
        const QRect label = field.floating_label->geometry();
        const int label_bottom =
            label.center().y() + QFontMetrics(field.floating_label->font()).height() / 2;
        const QRect line = field.line_edit->geometry();
        const int h = QFontMetrics(field.line_edit->font()).height();
        const int room = line.height() - field.line_edit->textMargins().top();
        const int text_top = line.top() + field.line_edit->textMargins().top() + (room - h) / 2;
        EXPECT_GE(room, h) << "the text has its height at " << size;
        EXPECT_LE(label_bottom, text_top + 3) << "at " << size;
        EXPECT_TRUE(QRect(QPoint(), field.size()).contains(label.topLeft()));
    }
}

TEST_F(Field, GeometryFollowsTheFontAndTheInsets) {
    field.setFixedSize(300, 60);
    show();
    QTest::qWait(1);
    const auto height_of = [&](int px) {
        QFont font = field.font();
        font.setPixelSize(px);
        return QFontMetrics(font).height();
    };
    EXPECT_EQ(field.line_edit->geometry(), QRect(13, 7, 274, 46));
    EXPECT_EQ(field.line_edit->textMargins(), QMargins(4, height_of(10), 0, 0));
    EXPECT_EQ(field.label_rest, QPoint(17, (60 - height_of(14)) / 2));
    EXPECT_EQ(field.label_up, QPoint(17, 4));
    EXPECT_EQ(field.floating_label->size(), QSize(270, height_of(14)));
    EXPECT_EQ(field.sizeHint().height(), height_of(10) + 14 + height_of(14) + 4);
    EXPECT_EQ(field.minimumSizeHint(), QSize(0, field.sizeHint().height()));
    apply(field_style(10), "");
    EXPECT_EQ(field.small_size, 9.0) << "never below 9";
    apply(field_style(0), "");
    EXPECT_EQ(field.font_size, 14.0);
}

TEST_F(Field, APrefixIconMovesTheTextAside) {
    TestSupport::TempDir dir;
    TestSupport::write_file(dir / "globe.svg",
                            R"(<svg xmlns="http://www.w3.org/2000/svg" width="24" height="24">)"
                            R"(<rect id="a" width="24" height="24" fill="#000"/></svg>)");
    set_icon_dirs({dir.path().string()});
    SharedStyle style = field_style();
    style.edit().source = "globe";
    field.setFixedSize(300, 60);
    show();
    apply(style, "");
    ASSERT_TRUE(field.prefix_icon);
    EXPECT_TRUE(field.prefix_icon->isVisible());
    EXPECT_EQ(field.prefix_size, 16);
    EXPECT_EQ(field.prefix_space, 22);
    EXPECT_EQ(field.prefix_icon->geometry(), QRect(17, 22, 16, 16));
    EXPECT_EQ(field.line_edit->textMargins().left(), 26);
    EXPECT_EQ(field.label_rest.x(), 13 + 26);
    EXPECT_NEAR(picture_of(*field.prefix_icon).pixelColor(8, 8).alpha(), 128, 1);
    apply(field_style(), "");
    EXPECT_FALSE(field.prefix_icon->isVisible());
    EXPECT_EQ(field.line_edit->textMargins().left(), 4);
}

TEST_F(Field, APressOnTheBoxGivesTheFocusToTheText) {
    show();
    leave();
    QTest::mousePress(&field, Qt::LeftButton, {}, {2, 2});
    EXPECT_TRUE(field.line_edit->hasFocus());
}

TEST_F(Field, SecretAndReadOnly) {
    SharedStyle style = field_style();
    style.edit().secret = true;
    apply(style, "pass");
    EXPECT_EQ(field.line_edit->echoMode(), QLineEdit::Password);
    EXPECT_EQ(field.label_progress, 1);
    style.edit().secret = false;
    style.edit().read_only = true;
    apply(style, "pass");
    EXPECT_EQ(field.line_edit->echoMode(), QLineEdit::Normal);
    QTest::keyClicks(field.line_edit, QStringLiteral("x"));
    EXPECT_EQ(text(), "pass");
    EXPECT_TRUE(reports.empty());
}

TEST_F(Field, AVeryLongTextIsKeptWhole) {
    const std::string text_in(100000, 'x');
    apply(field_style(), text_in);
    QTest::keyClick(field.line_edit, Qt::Key_End);
    QTest::keyClicks(field.line_edit, QStringLiteral("y"));
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports.front(), text_in + "y");
}
