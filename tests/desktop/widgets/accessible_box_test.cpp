#include "desktop/widgets/combo_widget.h"
#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/wrap_label.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>

#include <memory>

using namespace Corvel;

namespace {

std::string name_of(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).toStdString();
}

QAccessible::Role role_of(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget)->role();
}

} // namespace

TEST(AccessibleBox, ABoxWithAClickIsAButtonWithANameAndAPress) {
    VBoxWidget box;
    box.setObjectName(QStringLiteral("Save Button"));
    int clicks = 0;
    box.on_click = [&] { ++clicks; };
    EXPECT_EQ(role_of(&box), QAccessible::Button);
    EXPECT_EQ(name_of(&box), "Save Button");
    WrapLabel empty(&box);
    WrapLabel label(&box);
    label.setText(QStringLiteral("Save"));
    EXPECT_EQ(name_of(&box), "Save");
    box.setAccessibleName(QStringLiteral("Save the file"));
    EXPECT_EQ(name_of(&box), "Save the file");

    QAccessibleActionInterface* actions =
        QAccessible::queryAccessibleInterface(&box)->actionInterface();
    ASSERT_TRUE(actions);
    EXPECT_EQ(actions->actionNames().value(0), QAccessibleActionInterface::pressAction());
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks, 1);
}

TEST(AccessibleBox, ACheckBoxTellsItsState) {
    VBoxWidget box;
    box.on_click = [&] { box.set_checked(!box.checked); };
    box.checkable = true;
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&box);
    EXPECT_EQ(face->role(), QAccessible::CheckBox);
    EXPECT_TRUE(face->state().checkable);
    EXPECT_FALSE(face->state().checked);
    face->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(face->state().checked);
}

TEST(AccessibleBox, OtherBoxesAndFieldsAreThemselves) {
    VBoxWidget plain;
    EXPECT_NE(role_of(&plain), QAccessible::Button);
    EditorWidget editor;
    apply_editor_style(&editor, SharedStyle(), "Title", "", true);
    EXPECT_EQ(name_of(editor.line_edit), "Title");
    EXPECT_EQ(role_of(editor.line_edit), QAccessible::EditableText);
    ComboWidget combo;
    combo.setObjectName(QStringLiteral("Policy"));
    apply_combo_style(&combo, SharedStyle(), {}, "");
    EXPECT_EQ(name_of(combo.combo), "Policy");
}
