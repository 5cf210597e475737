#include "view_fixture.h"

#include <QComboBox>
#include <QTextEdit>

namespace ViewTest {
namespace {

class ViewInput : public ViewFixture {
protected:
    RenderNode button(const std::string& name) {
        return node(NodeKind::Button, name, {.width = 40, .height = 40});
    }
};

TEST_F(ViewInput, ThePointerShowsWhatAPressWouldDo) {
    show(box("App", {.layout_align = "Stretch", .intent = "window:resize"},
             {box("Bar", {.height = 40, .intent = "window:drag"}), button("Go")}));
    EXPECT_EQ(view.widget_at("App/Bar")->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(view.widget_at("App/Go")->cursor().shape(), Qt::PointingHandCursor);
    VBoxWidget* edges = widget<VBoxWidget>("App");
    const std::pair<QPoint, Qt::CursorShape> cases[] = {
        {{8, 30}, Qt::SizeHorCursor},   {{9, 30}, Qt::ArrowCursor},
        {{592, 30}, Qt::SizeHorCursor}, {{50, 8}, Qt::SizeVerCursor},
        {{0, 0}, Qt::SizeFDiagCursor},  {{8, 392}, Qt::SizeBDiagCursor},
    };
    for (const auto& [at, shape] : cases) {
        QMouseEvent move(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(edges, &move);
        EXPECT_EQ(edges->cursor().shape(), shape) << at.x() << ", " << at.y();
    }
    // The window system is asked to resize or move; a press elsewhere is left to the parent.
    const std::tuple<const char*, QPoint, bool> presses[] = {
        {"App", {3, 200}, true}, {"App", {300, 300}, false}, {"App/Bar", {300, 20}, true}};
    for (const auto& [path, at, taken] : presses) {
        QMouseEvent down(QEvent::MouseButtonPress, at, at, Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(view.widget_at(path), &down);
        EXPECT_EQ(down.isAccepted(), taken) << path << at.x();
    }
}

TEST_F(ViewInput, AChoiceThatTheHandlerTakesBackLeavesTheControlToo) {
    RenderNode combo = node(NodeKind::ComboBox, "Combo");
    combo.items = {{"a", "First"}, {"b", "Second"}};
    combo.selected = "a";
    app.set_options("App/Combo", combo.items);
    bool refuse = true;
    app.on_select("App/Combo", [&](const std::string&) {
        if (refuse)
            app.set_selected("App/Combo", "a");
    });
    show(box("App", {}, {combo}));
    QComboBox* control = widget<ComboWidget>("App/Combo")->combo;
    control->setFocus();
    QTest::keyClick(control, Qt::Key_Down);
    EXPECT_EQ(control->currentText(), QStringLiteral("First"));
    refuse = false;
    QTest::keyClick(control, Qt::Key_Down);
    EXPECT_EQ(control->currentText(), QStringLiteral("Second"));
}

TEST_F(ViewInput, AHandlerMayEndItsButtonItsWindowOrReplaceItself) {
    int clicks = 0;
    app.on_click("App/Go", [&] {
        ++clicks;
        app.on_click("App/Go", [&] { window.reset(); });
        apply({removal("App/Go"), add("App", button("Go"))});
        ++clicks; // what the replaced handler holds is still there
    });
    show(box("App", {}, {button("Go")}));
    press("App/Go");
    EXPECT_EQ(clicks, 2);
    press("App/Go");
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(view.widget_at("App"), nullptr);
}

TEST_F(ViewInput, RequestsOfOneTurnCostOneRender) {
    // A deferred render is a call posted to the window.
    struct Calls : QObject {
        int count = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::MetaCall ? 1 : 0;
            return false;
        }
    } calls;
    show(box("App", {}, {editor("Field")}));
    window->installEventFilter(&calls);
    app.on_async_change();
    view.schedule_render();
    QTest::keyClicks(line("App/Field"), QStringLiteral("abc"));
    settle();
    EXPECT_EQ(calls.count, 1);
}

TEST_F(ViewInput, AVeryLongTextIsKeptWholeAlsoWhereItGetsManyLines) {
    const std::string words(40000, 'x');
    show(box("App", {}, {editor("Field", words)}));
    line("App/Field")->end(false);
    QTest::keyClick(line("App/Field"), Qt::Key_Y);
    EXPECT_EQ(app.input_value("App/Field"), words + "y");
    apply({update("App", editor("Field", words, {.multiline = true}))});
    EXPECT_EQ(widget<EditorWidget>("App/Field")->text_edit->toPlainText().toStdString(),
              words + "y");
}

} // namespace
} // namespace ViewTest
