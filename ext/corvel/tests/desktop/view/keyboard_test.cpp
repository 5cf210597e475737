#include "view_fixture.h"

#include <QAccessible>
#include <QComboBox>
#include <QTextEdit>
#include <QToolTip>

namespace ViewTest {
namespace {

class ViewKeyboard : public ViewFixture {
protected:
    static RenderNode button(const std::string& name, const std::string& words = {}) {
        return node(NodeKind::Button, name, {.width = 80, .height = 30},
                    words.empty() ? std::vector<RenderNode>{} : std::vector{text("Label", words)});
    }
    static RenderNode dialog(const std::string& name, std::vector<RenderNode> body) {
        return box(name, {.width = 300, .overlay = "Modal"},
                   {box("Titlebar", {.intent = "window:drag"},
                        {text("Title", "Add " + name), button("Exit Button")}),
                    box("Body", {}, std::move(body))});
    }
    void listen(const std::string& path) {
        app.on_click(path, [this, path] { heard += "<" + path + ">"; });
    }
    void key(Qt::Key pressed, Qt::KeyboardModifiers held = {}) {
        QWidget* top = QApplication::activeWindow();
        QTest::keyClick(top->focusWidget() ? top->focusWidget() : top, pressed, held);
        settle();
    }
    /// The name of the node with the focus, "-" if no control has it.
    static std::string focused() {
        QWidget* focus = QApplication::focusWidget();
        if (!focus || focus->isWindow())
            return "-";
        const bool own = qobject_cast<VBoxWidget*>(focus) != nullptr;
        return (own ? focus : focus->parentWidget())->objectName().toStdString();
    }
    static bool has_ring(QWidget* box) {
        QWidget* focus = QApplication::focusWidget();
        const QImage with = box->grab().toImage();
        box->window()->setFocus();
        const QImage without = box->grab().toImage();
        focus->setFocus(Qt::OtherFocusReason);
        return with != without;
    }
    std::string face(const std::string& path) {
        return QAccessible::queryAccessibleInterface(view.widget_at(path))
            ->text(QAccessible::Name)
            .toStdString();
    }
    QAccessible::State state_of(const std::string& path) {
        return QAccessible::queryAccessibleInterface(view.widget_at(path))->state();
    }

    std::string heard;
};

TEST_F(ViewKeyboard, TabReachesWhatCanBePressedInReadingOrderAndKeysPressIt) {
    for (const char* path : {"App/First", "App/Tick", "App/Last"})
        listen(path);
    show(box("App", {},
             {button("Last"), box("Row", {.layout_direction = "Row-Reverse"}, {editor("Field")}),
              node(NodeKind::CheckBox, "Tick", {.width = 20, .height = 20})}));
    apply({add("App", button("First"), 0)});
    EXPECT_EQ(focused(), "-") << "nothing is focused at first";
    std::string order;
    for (int i = 0; i < 5; ++i) {
        key(Qt::Key_Tab);
        order += focused() + " ";
    }
    EXPECT_EQ(order, "First Last Field Tick First ");
    EXPECT_TRUE(has_ring(view.widget_at("App/First")));
    key(Qt::Key_Space);
    key(Qt::Key_Backtab);
    key(Qt::Key_Return);
    EXPECT_EQ(heard, "<App/First><App/Tick>");
    press("App/Last");
    EXPECT_EQ(focused(), "Tick") << "a click takes no focus";
    key(Qt::Key_Backtab);
    EXPECT_TRUE(has_ring(view.widget_at("App/Row/Field")));
}

TEST_F(ViewKeyboard, AButtonMadeAnewUnderTheKeyboardKeepsIt) {
    show(box("App", {}, {box("List", {}, {button("Remove"), editor("Field")})}));
    key(Qt::Key_Tab);
    apply({removal("App/List"), add("App", box("List", {}, {button("Remove")}))});
    EXPECT_EQ(focused(), "Remove");
    apply({removal("App/List"), add("App", box("List", {}, {editor("Field")}))});
    EXPECT_EQ(focused(), "-") << "a field that comes does not take it";
}

TEST_F(ViewKeyboard, ADialogFocusesItsFirstFieldAndGivesTheFocusBack) {
    listen("App/Outer/Body/Save Button");
    show(box("App", {}, {editor("Field", "kept")}));
    key(Qt::Key_Tab);
    apply({add("App", dialog("Outer", {box("Group", {}, {editor("Name", "My Site")}),
                                       editor("Slug"), button("Save Button", "Save")})),
           editor_text("App/Outer/Body/Group/Name", "Your Site")});
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.widget_at("App/Outer")->window()));
    EXPECT_EQ(focused(), "Name");
    EXPECT_EQ(line("App/Outer/Body/Group/Name")->selectedText(), QStringLiteral("Your Site"));
    key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(heard, "<App/Outer/Body/Save Button>");
    QWidget* window_of_dialog = view.widget_at("App/Outer")->window();
    QAccessibleInterface* outer = QAccessible::queryAccessibleInterface(window_of_dialog);
    EXPECT_EQ(outer->role(), QAccessible::Dialog);
    EXPECT_EQ(outer->text(QAccessible::Name), QStringLiteral("Add Outer"));
    EXPECT_TRUE(outer->state().modal);
    apply({removal("App/Outer")});
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    EXPECT_EQ(focused(), "Field");
    apply({add("App", dialog("Question", {button("Remove")}))});
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.widget_at("App/Question")->window()));
    EXPECT_EQ(focused(), "-") << "no key may answer it by chance";
}

TEST_F(ViewKeyboard, TabsOfTheWindowHaveKeys) {
    RenderNode tabs = box("Tabs", {.layout_direction = "Row", .bind = "List:leftTabs"});
    for (const char* name : {"a", "b", "c"}) {
        tabs.children.push_back(button(name));
        tabs.children.back().children = {button("Close Button")};
        listen("App/Tabs/" + std::string(name));
        listen("App/Tabs/" + std::string(name) + "/Close Button");
    }
    show(box("App", {}, {tabs, node(NodeKind::Editor, "Text", {.multiline = true})}));
    widget<EditorWidget>("App/Text")->text_edit->setFocus();
    const auto answer = [&](Qt::Key pressed, Qt::KeyboardModifiers held) {
        heard.clear();
        key(pressed, held);
        return heard;
    };
    EXPECT_EQ(answer(Qt::Key_Tab, Qt::ControlModifier), "<App/Tabs/a>") << "from none";
    EXPECT_EQ(answer(Qt::Key_W, Qt::ControlModifier), "");
    app.add_state("App/Tabs/c", "Active");
    EXPECT_EQ(answer(Qt::Key_Tab, Qt::ControlModifier), "<App/Tabs/a>");
    EXPECT_EQ(answer(Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier), "<App/Tabs/b>");
    EXPECT_EQ(answer(Qt::Key_2, Qt::ControlModifier), "<App/Tabs/b>");
    EXPECT_EQ(answer(Qt::Key_9, Qt::ControlModifier), "");
    EXPECT_EQ(answer(Qt::Key_W, Qt::ControlModifier), "<App/Tabs/c/Close Button>");
}

TEST_F(ViewKeyboard, WhatIsSeenIsTold) {
    app.add_state("App/Card/Up Button", "Disabled");
    app.add_state("App/Shown Tab", "Active");
    show(box(
        "App", {},
        {box("Card", {}, {text("Title", "Gauge"), button("Up Button"), button("Remove Button")}),
         button("Shown Tab"), editor("Field")}));
    EXPECT_EQ(face("App/Card/Remove Button"), "Remove Gauge");
    EXPECT_EQ(face("App/Card/Up Button"), "Move up Gauge");
    EXPECT_TRUE(state_of("App/Card/Up Button").disabled);
    EXPECT_FALSE(state_of("App/Card/Remove Button").disabled);
    EXPECT_EQ(face("App/Shown Tab"), "Shown");
    EXPECT_TRUE(state_of("App/Shown Tab").selected);
    QHelpEvent help(QEvent::ToolTip, {1, 1}, window->mapToGlobal(QPoint(1, 1)));
    QCoreApplication::sendEvent(view.widget_at("App/Card/Remove Button"), &help);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Remove Gauge"));
    // Assistive programs write without a key.
    QAccessible::queryAccessibleInterface(line("App/Field"))
        ->setText(QAccessible::Value, QStringLiteral("spoken"));
    EXPECT_EQ(app.input_value("App/Field"), "spoken");
}

TEST_F(ViewKeyboard, ADialogIsNoLargerThanTheScreenAndDimsTheOneBelow) {
    const int room = window->screen()->availableGeometry().height();
    show(box("App", {}, {}));
    apply({add("App", dialog("High", {box("Tall", {.height = 3.0 * room}, {})}))});
    QWidget* high = view.widget_at("App/High")->window();
    EXPECT_LE(high->height(), room);
    EXPECT_GE(high->y(), 0);
    EXPECT_LE(high->geometry().bottom(), room);
    const QRgb before = high->grab().toImage().pixel(high->width() / 2, high->height() / 2);
    apply({add("App", dialog("Above", {button("OK")}))});
    EXPECT_NE(high->grab().toImage().pixel(high->width() / 2, high->height() / 2), before);
    apply({removal("App/Above")});
    EXPECT_EQ(high->grab().toImage().pixel(high->width() / 2, high->height() / 2), before);
}

TEST_F(ViewKeyboard, ThePaletteFollowsTheTheme) {
    const QColor link = QApplication::palette().color(QPalette::Link);
    const auto theme = [](const std::string& name, const std::string& foreground) {
        return R"({")" + name + R"(": {"Foreground": ")" + foreground +
               R"(", "Primary": "#101010", "Secondary": "#202020", "Tertiary": "#404040"}})";
    };
    app.add_theme_text(theme("One", "#ffffff"));
    app.add_theme_text(theme("Two", "#c0c0c0"));
    const auto put = [&](const char* name) {
        app.set_theme(name);
        apply({});
        return QApplication::palette();
    };
    const QPalette one = put("One");
    EXPECT_EQ(one.color(QPalette::Window), QColor(QStringLiteral("#101010")));
    EXPECT_EQ(one.color(QPalette::Button), QColor(QStringLiteral("#202020")));
    EXPECT_EQ(one.color(QPalette::Base), QColor(QStringLiteral("#404040")));
    EXPECT_EQ(one.color(QPalette::Highlight), QColor(QStringLiteral("#707070")));
    EXPECT_EQ(one.color(QPalette::HighlightedText), QColor(QStringLiteral("#ffffff")));
    EXPECT_EQ(one.color(QPalette::Disabled, QPalette::Text), QColor(QStringLiteral("#707070")));
    EXPECT_EQ(one.color(QPalette::Link), link) << "rendered Markdown is recognised by it";
    EXPECT_EQ(put("Two").color(QPalette::Text), QColor(QStringLiteral("#c0c0c0")));
}

} // namespace
} // namespace ViewTest
