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

namespace TestSupport {

AppWindow::AppWindow()
    : view(*app) {}

void AppWindow::start(const std::vector<std::filesystem::path>& files) {
    build_with_files(*app, files);
    window.reset(view.build());
    window->resize(1000, 700);
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    render();
}

QWidget* AppWindow::widget(const std::string& node) const {
    return shown(node) ? view.widget_at(path_of(node)) : nullptr;
}

void AppWindow::click(const std::string& node) {
    QWidget* target = widget(node);
    ASSERT_NE(target, nullptr) << node;
    QTest::mouseClick(target, Qt::LeftButton);
    render();
}

void AppWindow::type(const std::string& node, const std::string& text) {
    auto* editor = qobject_cast<Corvel::EditorWidget*>(widget(node));
    ASSERT_NE(editor, nullptr) << node;
    QWidget* field = editor->control();
    field->setFocus();
    QTest::keySequence(field, QKeySequence::SelectAll);
    if (text.empty())
        QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, QString::fromStdString(text));
    render();
}

void AppWindow::choose(const std::string& node, const std::string& value) {
    QComboBox* box = qobject_cast<Corvel::ComboWidget*>(widget(node))->combo;
    int index = 0;
    for (const Corvel::ComboItem& item : this->node(node).items.get()) {
        if (item.value == value)
            box->setCurrentIndex(index);
        ++index;
    }
    Q_EMIT box->activated(box->currentIndex());
    render();
}

std::string AppWindow::chosen(const std::string& node) const {
    const int index = qobject_cast<Corvel::ComboWidget*>(widget(node))->combo->currentIndex();
    return this->node(node).items.get().at(static_cast<std::size_t>(index)).value;
}

std::string AppWindow::text(const std::string& node) const {
    const auto* editor = qobject_cast<Corvel::EditorWidget*>(widget(node));
    if (!editor)
        return this->node(node).text;
    return editor->shown_text().toStdString();
}

void AppWindow::advance(int milliseconds) {
    platform.advance(milliseconds);
    if (app->on_async_change)
        app->on_async_change();
    render();
}

const ModelView& AppWindow::screen() const {
    const Corvel::RenderNode tree = app->build_render_tree();
    screen_ = ModelView();
    EXPECT_EQ(screen_.apply({{Corvel::PatchKind::Add, tree.path, {}, 0, tree}}), "");
    return screen_;
}

void AppWindow::render() {
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    note_seen();
}

} // namespace TestSupport
