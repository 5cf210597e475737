#include "app_window.h"

#include "desktop/widgets/editor_widget.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QLineEdit>
#include <QTest>
#include <QTextEdit>
#include <QWidget>

namespace TestSupport {

namespace {

void settle() {
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

/// The path of the node at or below `row` that carries the intent; empty if there is none.
std::string find_intent(const Corvel::RenderNode& node, const std::string& row,
                        const std::string& intent) {
    const std::string& path = node.path;
    if (path.starts_with(row) && node.style->intent == intent)
        return path;
    for (const Corvel::RenderNode& child : node.children)
        if (std::string found = find_intent(child, row, intent); !found.empty())
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

QWidget* AppWindow::widget(const std::string& path) const {
    return view.widget_at(path);
}

void AppWindow::click(const std::string& path) {
    QWidget* target = widget(path);
    ASSERT_NE(target, nullptr) << path;
    QTest::mouseClick(target, Qt::LeftButton);
    settle();
}

void AppWindow::row_action(const std::string& row_path, const std::string& action) {
    click(find_intent(app->build_render_tree(), row_path, "list:" + action));
}

void AppWindow::type(const std::string& path, const std::string& text) {
    auto* editor = qobject_cast<Corvel::EditorWidget*>(widget(path));
    ASSERT_NE(editor, nullptr) << path;
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

std::string AppWindow::editor_text(const std::string& path) const {
    const auto* editor = qobject_cast<Corvel::EditorWidget*>(widget(path));
    if (!editor)
        return "(no editor)";
    return (editor->multiline ? editor->text_edit->toPlainText() : editor->line_edit->text())
        .toStdString();
}

void AppWindow::advance(int milliseconds) {
    platform.advance(milliseconds);
    app->on_async_change();
    settle();
}

} // namespace TestSupport
