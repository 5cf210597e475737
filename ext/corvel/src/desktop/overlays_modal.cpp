#include "desktop/desktop_view_p.h"
#include "desktop/node_create.h"
#include "desktop/overlays.h"
#include "desktop/widgets/root_container.h"
#include "desktop/widgets/vbox_widget.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace Corvel {

namespace {

/// The box that closes a dialog, below the dialog's node.
constexpr const char* EXIT_BUTTON = "/Titlebar/Exit Button";

/// The window of a modal node. Its node decides how long it is open, so Escape and the window
/// manager's close press the dialog's exit button: closed by itself, its scrim would stay and block
/// the program. Return in a field presses the button at the bottom right; in a dialog without
/// fields it does so only if there is one button, so that it never answers a question.
class DialogWindow : public QWidget {
public:
    DialogWindow(QWidget* root, std::function<void()> leave)
        : QWidget(root, Qt::Dialog | Qt::FramelessWindowHint)
        , leave_(std::move(leave)) {
        setAttribute(Qt::WA_TranslucentBackground);
        setWindowModality(Qt::ApplicationModal);
    }

protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        leave_();
    }

    void keyPressEvent(QKeyEvent* event) override {
        const bool leaves = event->key() == Qt::Key_Escape;
        const bool accepts = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!leaves && !accepts)
            return QWidget::keyPressEvent(event);
        if (event->isAutoRepeat())
            return; // held down, it would answer the next dialog as well
        if (leaves)
            leave_();
        else
            accept();
    }

private:
    void accept() {
        std::vector<std::pair<QPoint, VBoxWidget*>> buttons;
        for (VBoxWidget* box : findChildren<VBoxWidget*>())
            if (box->on_click && !box->checkable && box->isVisible())
                buttons.emplace_back(box->mapTo(this, box->rect().bottomRight()), box);
        const auto last =
            std::max_element(buttons.begin(), buttons.end(), [](const auto& a, const auto& b) {
                return std::pair(a.first.y(), a.first.x()) < std::pair(b.first.y(), b.first.x());
            });
        constexpr std::size_t exit_and_one = 2;
        if (last != buttons.end() &&
            (qobject_cast<QLineEdit*>(focusWidget()) || buttons.size() <= exit_and_one))
            last->second->click();
    }

    std::function<void()> leave_;
};

QWidget* make_scrim(RootContainer* root) {
    auto* scrim = new QWidget(root);
    scrim->setStyleSheet(QStringLiteral("background-color: rgba(0, 0, 0, 0.5);"));
    return scrim;
}

void open_modal(ViewState& view, const ModalWindow& modal) {
    modal.scrim->setGeometry(view.root->rect());
    modal.scrim->show();
    modal.scrim->raise();
    modal.window->adjustSize();
    const QRect around = view.root->geometry();
    modal.window->move(around.x() + (around.width() - modal.window->width()) / 2,
                       around.y() + (around.height() - modal.window->height()) / 2);
    modal.window->show();
}

void drop(ViewState& view, const ModalWindow& modal) {
    const bool in_use = QApplication::activeWindow() != nullptr;
    for (const QPointer<QWidget>& part : {modal.scrim, modal.window})
        if (part) {
            part->hide();
            part->deleteLater();
        }
    if (!in_use)
        return;
    QWidget* next = view.root;
    for (const auto& [path, other] : view.overlays.modals)
        if (other.window && other.window->isVisible())
            next = other.window;
    next->activateWindow();
}

} // namespace

bool is_modal(const RenderNode& node) {
    return node.style->overlay == "Modal";
}

void create_modal(ViewState& view, const RenderNode& node, DNode* parent) {
    const auto leave = [&view, path = node.path.get()] {
        if (const DNode* exit = view.find(path + EXIT_BUTTON); exit && exit->box)
            exit->box->click();
    };
    ModalWindow modal{new DialogWindow(view.root, leave), make_scrim(view.root)};
    auto* layout = new QVBoxLayout(modal.window);
    layout->setContentsMargins(0, 0, 0, 0);
    ModalNodes inner;
    layout->addWidget(create_subtree(view, node, parent, inner).outer);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    modal.window->setWindowTitle(view.root->windowTitle());
    for (const RenderNode& child : node.children)
        float_overlays(view, child);
    close_modal(view, node.path);
    view.overlays.modals[node.path] = modal;
    if (view.root->isVisible())
        open_modal(view, modal);
    else
        view.overlays.waiting_modals.push_back(node.path);
    create_modals(view, inner);
}

void close_modal(ViewState& view, const std::string& path) {
    const auto entry = view.overlays.modals.find(path);
    if (entry == view.overlays.modals.end())
        return;
    const ModalWindow modal = std::exchange(entry->second, {});
    view.overlays.modals.erase(entry);
    drop(view, modal);
}

void open_waiting_modals(ViewState& view) {
    for (const std::string& path : std::exchange(view.overlays.waiting_modals, {}))
        if (const auto entry = view.overlays.modals.find(path);
            entry != view.overlays.modals.end() && !entry->second.window->isVisible())
            open_modal(view, entry->second);
}

void resize_scrims(ViewState& view) {
    for (const auto& [path, modal] : view.overlays.modals)
        if (modal.scrim)
            modal.scrim->setGeometry(view.root->rect());
}

} // namespace Corvel
