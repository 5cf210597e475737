#include "desktop/media/asset_paths.h"
#include "desktop/widgets/combo_widget.h"
#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/icon_widget.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/widget_support.h"
#include "desktop/widgets/wrap_label.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QVariantAnimation>

using namespace Corvel;

namespace {

/// A window with two fields, the first under test.
class Field : public testing::Test {
protected:
    Field() {
        auto* column = new QVBoxLayout(&window);
        column->setContentsMargins(0, 0, 0, 0);
        column->addWidget(&field);
        column->addWidget(&other);
        field.setFixedSize(300, 60);
        apply(style(14), "");
        apply_editor_style(&other, style(14), "Other", "", true);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        other.line_edit->setFocus();
        EXPECT_TRUE(label_reaches(0));
    }

    static NodeStyle style(double font_size, const std::string& source = {}) {
        return {.border_thickness = 1,
                .padding_left = 12,
                .padding_top = 6,
                .padding_right = 12,
                .padding_bottom = 6,
                .text_color = "#102030",
                .font_size = font_size,
                .source = source};
    }
    void apply(const NodeStyle& style, const std::string& text) {
        apply_editor_style(&field, style, "Title", text, false);
        QTest::qWait(1);
    }
    bool label_reaches(double progress) {
        return QTest::qWaitFor([&] { return field.label_progress == progress; }, 2000);
    }
    int height_of(int px) {
        QFont font = field.font();
        font.setPixelSize(px);
        return QFontMetrics(font).height();
    }

    QWidget window;
    EditorWidget field;
    EditorWidget other;
};

} // namespace

TEST_F(Field, TheLabelRisesWithFocusOrTextAndFallsWithout) {
    const QLabel* label = field.floating_label;
    EXPECT_EQ(label->text().toStdString(), "Title");
    EXPECT_EQ(label->font().pixelSize(), 14);
    EXPECT_EQ(label->geometry(), QRect(17, (60 - height_of(14)) / 2, 270, height_of(14)));
    QTest::mousePress(&field, Qt::LeftButton, {}, {2, 2}); // on the border
    EXPECT_TRUE(field.line_edit->hasFocus());
    EXPECT_EQ(field.label_animation->state(), QAbstractAnimation::Running);
    EXPECT_EQ(field.label_animation->duration(), 150);
    EXPECT_TRUE(label_reaches(1));
    EXPECT_EQ(label->pos(), QPoint(17, 4));
    EXPECT_EQ(label->font().pixelSize(), 10);
    EXPECT_TRUE(label->font().italic());
    other.line_edit->setFocus();
    EXPECT_TRUE(label_reaches(0));
    field.push_text("x");
    EXPECT_EQ(field.label_progress, 1) << "at once";
}

TEST_F(Field, LabelAndTextNeverMeet) {
    for (const double size : {0.0, 10.0, 12.0, 14.0, 16.0, 20.0, 28.0}) {
        SCOPED_TRACE(size);
        apply(style(size), "text");
        field.setFixedHeight(field.sizeHint().height());
        QTest::qWait(1);
        const QFont small = field.floating_label->font();
        EXPECT_GE(small.pixelSize(), 9);
        const int label_bottom =
            field.floating_label->geometry().center().y() + QFontMetrics(small).height() / 2;
        const int line_height = QFontMetrics(field.line_edit->font()).height();
        const QRect line =
            field.line_edit->geometry().marginsRemoved(field.line_edit->textMargins());
        EXPECT_GE(line.height(), line_height);
        EXPECT_LE(label_bottom, line.center().y() - line_height / 2 + 3);
        EXPECT_EQ(field.line_edit->geometry().left(), 13);
    }
}

TEST_F(Field, APrefixIconMovesTheTextAside) {
    set_icon_dirs({SOURCE_ROOT "/ext/corvel/icons"});
    apply(style(14, "globe"), "");
    EXPECT_EQ(field.prefix_icon->geometry(), QRect(17, 22, 16, 16));
    EXPECT_TRUE(field.prefix_icon->isVisible());
    EXPECT_EQ(field.line_edit->textMargins().left(), 26);
    EXPECT_EQ(field.floating_label->x(), 13 + 26);
    EXPECT_EQ(field.prefix_icon->opacity, 0.5);
    apply(style(14), "");
    EXPECT_FALSE(field.prefix_icon->isVisible());
    EXPECT_EQ(field.line_edit->textMargins().left(), 4);
}

namespace {

const std::vector<ComboItem> three = {{"a", "Alpha"}, {"b", "Beta"}, {"B", "Other Beta"}};

class Combo : public testing::Test {
protected:
    Combo() {
        choose("a");
        combo.resize(200, 48);
        combo.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&combo));
    }
    void choose(const std::string& selected, const std::vector<ComboItem>& items = three) {
        const NodeStyle style{.fill = {"#202020"},
                              .border_fill = {"#404040"},
                              .border_thickness = 1,
                              .padding_left = 10,
                              .padding_top = 4,
                              .padding_right = 10,
                              .padding_bottom = 4,
                              .text_color = "#eeeeee",
                              .font_size = 20};
        apply_combo_style(&combo, style, items, selected);
    }
    std::string shown() { return combo.combo->currentText().toStdString(); }
    ComboWidget combo;
};

} // namespace

TEST_F(Combo, ShowsTheSelectedValueByExactCase) {
    const std::pair<const char*, const char*> cases[] = {
        {"B", "Other Beta"}, {"b", "Beta"}, {"unknown", "Beta"}, {"a", "Alpha"}};
    for (const auto& [value, label] : cases) {
        choose(value);
        EXPECT_EQ(shown(), label) << value;
    }
    // The rows are made anew for other labels only: an open list stays open.
    QSignalSpy rebuilt(combo.combo->model(), &QAbstractItemModel::rowsInserted);
    choose("a");
    EXPECT_EQ(rebuilt.count(), 0);
    choose("b", {{"a", "Alpha"}, {"b", "Gamma"}});
    EXPECT_EQ(shown(), "Gamma");
    choose("a", {});
    EXPECT_EQ(combo.combo->currentIndex(), -1);
}

TEST_F(Combo, OnlyTheUserSChoiceIsReported) {
    std::vector<std::string> chosen;
    combo.on_select = [&](const std::string& value) { chosen.push_back(value); };
    choose("B");
    EXPECT_TRUE(chosen.empty());
    QTest::keyClick(combo.combo, Qt::Key_Up);
    EXPECT_EQ(chosen, std::vector<std::string>{"b"});
}

TEST_F(Combo, TheBoxHasAChevronAndOpensTheList) {
    EXPECT_EQ(combo.combo->geometry(), QRect(11, 5, 200 - 22 - 24, 38));
    // Two arms of half size 4.4 around (177, 24): the tip is below the middle, the ends above it.
    for (const QPoint on : {QPoint(177, 26), QPoint(173, 22), QPoint(181, 22)})
        EXPECT_NE(color_at(combo, on.x(), on.y()), "#ff202020");
    EXPECT_EQ(color_at(combo, 177, 21), "#ff202020");
    EXPECT_EQ(combo.sizeHint(), combo.combo->sizeHint() + QSize(22, 10));
    EXPECT_EQ(combo.minimumSizeHint(), QSize(0, combo.sizeHint().height()));
    QTest::mousePress(&combo, Qt::LeftButton, {}, {190, 24});
    EXPECT_TRUE(combo.combo->view()->isVisible());
    EXPECT_GE(combo.combo->view()->width(), 190) << "as wide as the box";
    combo.combo->hidePopup();
}

TEST_F(Combo, TheWheelScrollsThePanelAndSelectsNothing) {
    QScrollArea area;
    QWidget content;
    combo.setParent(&content);
    content.resize(250, 1000);
    area.setWidget(&content);
    area.resize(300, 200);
    area.show();
    combo.show();
    area.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&area));
    turn_wheel_over(*combo.combo);
    EXPECT_EQ(shown(), "Alpha");
    EXPECT_GT(area.verticalScrollBar()->value(), 0);
    area.takeWidget();
    combo.setParent(nullptr);
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
        box.on_click = [&] { box.set_checked(!box.checked); };
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&box);
        EXPECT_EQ(face->role(), checkable ? QAccessible::CheckBox : QAccessible::Button);
        EXPECT_EQ(name_of(&box), "Save Button");
        WrapLabel empty(&box);
        WrapLabel label(&box);
        label.setText(QStringLiteral("Save"));
        EXPECT_EQ(name_of(&box), "Save");
        box.setAccessibleName(QStringLiteral("Save the file"));
        EXPECT_EQ(name_of(&box), "Save the file");
        QAccessibleActionInterface* actions = face->actionInterface();
        ASSERT_FALSE(actions->actionNames().isEmpty());
        actions->doAction(actions->actionNames().first());
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
