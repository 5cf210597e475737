#include "desktop/widgets/combo_widget.h"
#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/widget_support.h"
#include "desktop/widgets/wrap_label.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVariantAnimation>

using namespace Corvel;

namespace {

/// A field in a window of 300 by 60, without the focus.
class Field : public testing::Test {
protected:
    Field() {
        field.setGeometry(0, 0, 300, 60);
        window.resize(300, 60);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        style(14);
        window.setFocus();
        EXPECT_TRUE(label_reaches(0));
    }
    void style(double font_size, const std::string& text = {}) {
        const NodeStyle style{.border_thickness = 1,
                              .padding_left = 12,
                              .padding_top = 6,
                              .padding_bottom = 6,
                              .text_color = "#102030",
                              .font_size = font_size};
        apply_editor_style(&field, style, "Title", text, false);
        QTest::qWait(1);
    }
    bool label_reaches(double progress) {
        return QTest::qWaitFor([&] { return field.label_progress == progress; }, 2000);
    }
    QWidget window;
    EditorWidget field{&window};
    const QLabel* label = field.floating_label;
};

} // namespace

TEST_F(Field, TheLabelRisesWithFocusOrTextAndFallsWithout) {
    const int text_height = QFontMetrics(label->font()).height();
    EXPECT_EQ(label->text().toStdString(), "Title");
    EXPECT_EQ(label->font().pixelSize(), 14);
    EXPECT_EQ(label->pos(), QPoint(17, (60 - text_height) / 2));
    QTest::mousePress(&field, Qt::LeftButton, {}, {2, 2}); // on the border
    EXPECT_TRUE(field.line_edit->hasFocus());
    EXPECT_EQ(field.label_animation->state(), QAbstractAnimation::Running);
    EXPECT_EQ(field.label_animation->duration(), 150);
    EXPECT_TRUE(label_reaches(1));
    EXPECT_EQ(label->pos(), QPoint(17, 4));
    EXPECT_EQ(label->font().pixelSize(), 10);
    EXPECT_TRUE(label->font().italic());
    window.setFocus();
    EXPECT_TRUE(label_reaches(0));
    field.push_text("x");
    EXPECT_EQ(field.label_progress, 1) << "at once";
}

TEST_F(Field, TakesPastedLinesAsOne) {
    std::vector<std::string> reports;
    field.on_text_changed = [&](const std::string& text) { reports.push_back(text); };
    field.push_text("stored\nends");
    field.line_edit->setCursorPosition(3);
    QApplication::clipboard()->setText(QStringLiteral("one \r\n  two\nthree\n"));
    field.line_edit->paste();
    EXPECT_EQ(reports, std::vector<std::string>{"stoone two threered\nends"});
    EXPECT_EQ(field.line_edit->cursorPosition(), 16);
}

TEST_F(Field, LabelAndTextNeverMeetAtAnySize) {
    for (const double size : {0.0, 10.0, 14.0, 20.0, 28.0}) {
        SCOPED_TRACE(size);
        style(size, "text");
        field.resize(300, field.sizeHint().height());
        const QRect line =
            field.line_edit->geometry().marginsRemoved(field.line_edit->textMargins());
        const int text_height = QFontMetrics(field.line_edit->font()).height();
        const int label_height = QFontMetrics(label->font()).height();
        EXPECT_GE(label->font().pixelSize(), 9);
        EXPECT_GE(line.height(), text_height);
        EXPECT_LE(label->geometry().center().y() + label_height / 2,
                  line.center().y() - text_height / 2 + 3);
    }
}

namespace {

const std::vector<ComboItem> three = {{"a", "Alpha"}, {"b", "Beta"}, {"B", "Other Beta"}};

} // namespace

TEST(Combo, ShowsTheSelectedValueByExactCaseAndReportsTheUserSChoice) {
    ComboWidget combo;
    combo.resize(200, 48);
    combo.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&combo));
    const auto choose = [&](const std::string& selected, const std::vector<ComboItem>& items) {
        apply_combo_style(&combo, SharedStyle(), items, selected);
    };
    const auto shown = [&] { return combo.combo->currentText().toStdString(); };
    std::vector<std::string> chosen;
    combo.on_select = [&](const std::string& value) { chosen.push_back(value); };
    const std::pair<const char*, const char*> cases[] = {
        {"b", "Beta"}, {"unknown", "Beta"}, {"a", "Alpha"}, {"B", "Other Beta"}};
    for (const auto& [value, label] : cases) {
        choose(value, three);
        EXPECT_EQ(shown(), label) << value;
    }
    EXPECT_TRUE(chosen.empty());
    QTest::keyClick(combo.combo, Qt::Key_Up);
    EXPECT_EQ(chosen, std::vector<std::string>{"b"});
    // The rows are made anew for other labels only: an open list stays open.
    QSignalSpy rebuilt(combo.combo->model(), &QAbstractItemModel::rowsInserted);
    choose("a", three);
    EXPECT_EQ(rebuilt.count(), 0);
    choose("b", {{"a", "Alpha"}, {"b", "Gamma"}});
    EXPECT_EQ(shown(), "Gamma");
    QTest::mousePress(&combo, Qt::LeftButton, {}, {190, 24});
    EXPECT_TRUE(combo.combo->view()->isVisible());
    EXPECT_GE(combo.combo->view()->minimumWidth(), 190) << "as wide as the box";
    combo.combo->hidePopup();
    choose("a", {});
    EXPECT_EQ(combo.combo->currentIndex(), -1);
}

TEST(Combo, TheWheelScrollsThePanelAndSelectsNothing) {
    QScrollArea area;
    auto* content = new QWidget;
    auto* combo = new ComboWidget(content);
    apply_combo_style(combo, SharedStyle(), three, "a");
    content->resize(250, 1000);
    area.setWidget(content);
    area.resize(300, 200);
    area.show();
    area.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&area));
    turn_wheel_over(*combo->combo);
    EXPECT_EQ(combo->combo->currentIndex(), 0);
    EXPECT_GT(area.verticalScrollBar()->value(), 0);
}

namespace {

std::string name_of(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).toStdString();
}

} // namespace

TEST(Accessible, ABoxWithAClickIsAButtonOrACheckBoxWithANameAndAnAction) {
    for (const bool checkable : {false, true}) {
        VBoxWidget box;
        box.setObjectName(QStringLiteral("Save Button"));
        box.checkable = checkable;
        box.on_click = [&] { box.set_checked(true); };
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&box);
        EXPECT_EQ(face->role(), checkable ? QAccessible::CheckBox : QAccessible::Button);
        EXPECT_EQ(name_of(&box), "Save");
        WrapLabel empty(&box), label(&box);
        label.setText(QStringLiteral("Keep"));
        EXPECT_EQ(name_of(&box), "Keep");
        QAccessibleActionInterface* actions = face->actionInterface();
        actions->doAction(actions->actionNames().value(0));
        EXPECT_TRUE(box.checked);
        EXPECT_EQ(face->state().checkable, checkable);
        EXPECT_EQ(face->state().checked, checkable);
    }
}

TEST(Accessible, OtherBoxesAndFieldsAreThemselves) {
    VBoxWidget plain;
    EXPECT_NE(QAccessible::queryAccessibleInterface(&plain)->role(), QAccessible::Button);
    EditorWidget editor;
    apply_editor_style(&editor, SharedStyle(), "Title", "", true);
    EXPECT_EQ(name_of(editor.line_edit), "Title");
    ComboWidget combo;
    combo.setObjectName(QStringLiteral("Policy"));
    apply_combo_style(&combo, SharedStyle(), {}, "");
    EXPECT_EQ(name_of(combo.combo), "Policy");
}
