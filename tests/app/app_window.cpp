#include "app_window.h"

#include "desktop/widgets/combo_widget.h"
#include "desktop/widgets/editor_widget.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QLineEdit>
#include <QTest>
#include <QTextEdit>
#include <QWidget>

#include <functional>

namespace TestSupport {

namespace {

void settle() {
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

/// The path of the first node that matches; empty if there is none.
std::string find_node(const Corvel::RenderNode& node,
                      const std::function<bool(const Corvel::RenderNode&)>& matches) {
    if (matches(node))
        return node.path;
    for (const Corvel::RenderNode& child : node.children)
        if (std::string found = find_node(child, matches); !found.empty())
            return found;
    return {};
}

} // namespace

AppWindow::AppWindow()
    : app(load_app())
    , platform(*app)
    , view(*app) {}

void AppWindow::start(const std::vector<std::filesystem::path>& files) {
    build_with_files(*app, files);
    window.reset(view.build());
    window->resize(1000, 700);
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    settle();
}

void AppWindow::open(const std::filesystem::path& file) {
    click("Right Tabs/App Tab");
    platform.next_picks = {file.string()};
    click("Home/Open Button");
}

std::string AppWindow::path_of(const std::string& node) const {
    return find_node(app->build_render_tree(), [&](const Corvel::RenderNode& tried) {
        return ("/" + tried.path.get()).ends_with("/" + node);
    });
}

QWidget* AppWindow::widget(const std::string& node) const {
    return view.widget_at(path_of(node));
}

void AppWindow::click(const std::string& node) {
    QWidget* target = widget(node);
    ASSERT_NE(target, nullptr) << node;
    QTest::mouseClick(target, Qt::LeftButton);
    settle();
}

void AppWindow::row_action(const std::string& row, const std::string& action) {
    click(find_node(app->build_render_tree(), [&](const Corvel::RenderNode& tried) {
        return tried.style->intent == "list:" + action &&
               ("/" + tried.path.get() + "/").find("/" + row + "/") != std::string::npos;
    }));
}

void AppWindow::type(const std::string& node, const std::string& text) {
    auto* editor = qobject_cast<Corvel::EditorWidget*>(widget(node));
    ASSERT_NE(editor, nullptr) << node;
    QWidget* field = editor->line_edit;
    if (editor->multiline)
        field = editor->text_edit;
    field->setFocus();
    QTest::keySequence(field, QKeySequence::SelectAll);
    if (text.empty())
        QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, QString::fromStdString(text));
    settle();
}

QComboBox* AppWindow::combo(const std::string& node) const {
    return qobject_cast<Corvel::ComboWidget*>(widget(node))->combo;
}

void AppWindow::choose(const std::string& node, int index) {
    QComboBox* box = combo(node);
    box->setCurrentIndex(index);
    Q_EMIT box->activated(index);
    settle();
}

std::string AppWindow::editor_text(const std::string& node) const {
    const auto* editor = qobject_cast<Corvel::EditorWidget*>(widget(node));
    if (!editor)
        return "(no editor)";
    return (editor->multiline ? editor->text_edit->toPlainText() : editor->line_edit->text())
        .toStdString();
}

void AppWindow::advance(int milliseconds) {
    platform.advance(milliseconds);
    if (app->on_async_change)
        app->on_async_change();
    settle();
}

void AppWindow::confirm() {
    click("Confirm Dialog/Body/Actions/Confirm Button");
}

void AppWindow::cancel() {
    click("Confirm Dialog/Body/Actions/Cancel Button");
}

std::string AppWindow::question() const {
    std::string words;
    find_node(app->build_render_tree(), [&](const Corvel::RenderNode& tried) {
        const bool found = tried.path.get() == "App/Confirm Dialog/Body/Message";
        if (found)
            words = tried.text;
        return found;
    });
    return words;
}

} // namespace TestSupport
