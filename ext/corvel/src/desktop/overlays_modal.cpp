#include "desktop/desktop_view_p.h"
#include "desktop/focus.h"
#include "desktop/node_create.h"
#include "desktop/overlays.h"
#include "desktop/widgets/dialog_area.h"
#include "desktop/widgets/root_container.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/wrap_label.h"
#include "desktop/window_keys.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QScreen>
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
/// The label that names it.
constexpr const char* TITLE = "/Titlebar/Title";
/// Kept free between a dialog and the edges of a narrow main window, in pixels.
constexpr int SIDE_MARGIN = 12;

/// The window of a modal node. Its node decides how long it is open, so Escape and the window
/// manager's close press the dialog's exit button: closed by itself, its scrim would stay and block
/// the program. Return in a field presses the button at the bottom right; in a dialog without
/// fields it does so only if there is one button, so that it never answers a question.
class DialogWindow : public QWidget {
public:
    using KeyHandler = std::function<bool(QWidget*, const QKeyEvent&)>;

    DialogWindow(QWidget* root, std::function<void()> leave, KeyHandler take_key)
        : QWidget(root, Qt::Dialog | Qt::FramelessWindowHint)
        , leave_(std::move(leave))
        , take_key_(std::move(take_key)) {
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
        if (!leaves && !accepts) {
            if (!take_key_(this, *event))
                QWidget::keyPressEvent(event);
            return;
        }
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
    KeyHandler take_key_;
};

/// Dims all of `window`, which has round corners of that radius.
QWidget* make_scrim(QWidget* window, double radius) {
    auto* scrim = new QWidget(window);
    scrim->setStyleSheet(
        QStringLiteral("background-color: rgba(0, 0, 0, 0.5); border-radius: %1px;")
            .arg(int(radius)));
    return scrim;
}

void cover(QWidget* scrim) {
    scrim->setGeometry(scrim->parentWidget()->rect());
    scrim->show();
    scrim->raise();
}

/// The main window's corners are those of the box that resizes it.
double root_radius(const ViewState& view) {
    for (const auto& [path, dnode] : view.nodes)
        if (dnode.box && dnode.box->window_resize)
            return dnode.box->style->radius_top_left;
    return 0;
}

/// Dims the dialogs that are open already.
void shade_others(ViewState& view, ModalWindow& modal) {
    for (const auto& [path, other] : view.overlays.modals) {
        const DNode* below = view.find(path);
        if (other.window == modal.window || !other.window || !other.window->isVisible() || !below)
            continue;
        const double radius = below->box ? below->box->style->radius_top_left : 0;
        modal.shades.emplace_back(make_scrim(other.window, radius));
        cover(modal.shades.back());
    }
}

/// A dialog of fixed width that the main window is too narrow for takes the width that there is.
void fit_width(const ViewState& view, const DNode& dnode) {
    const int room = view.root->width() - 2 * SIDE_MARGIN;
    QWidget& content = *dnode.widget;
    if (content.minimumWidth() == content.maximumWidth() && content.minimumWidth() > room)
        content.setFixedWidth(std::max(room, 1));
}

void open_modal(ViewState& view, const std::string& path, ModalWindow& modal) {
    if (const DNode* dnode = view.find(path))
        fit_width(view, *dnode);
    cover(modal.scrim);
    shade_others(view, modal);
    modal.window->adjustSize();
    const QRect around = view.root->geometry();
    const QRect screen = view.root->screen()->availableGeometry();
    const int top = around.y() + (around.height() - modal.window->height()) / 2;
    const int lowest = screen.bottom() + 1 - modal.window->height();
    modal.window->move(around.x() + (around.width() - modal.window->width()) / 2,
                       std::max(std::min(top, lowest), screen.top()));
    modal.window->show();
    view.overlays.opened_modals.push_back(path);
}

void drop(ViewState& view, const ModalWindow& modal) {
    const bool in_use = QApplication::activeWindow() != nullptr;
    std::vector<QPointer<QWidget>> parts = modal.shades;
    parts.insert(parts.end(), {modal.scrim, modal.window});
    for (const QPointer<QWidget>& part : parts)
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
    const auto take_key = [&view](QWidget* window, const QKeyEvent& key) {
        return press_window_key(view, window, key);
    };
    ModalWindow modal{
        new DialogWindow(view.root, leave, take_key), make_scrim(view.root, root_radius(view)), {}};
    auto* layout = new QVBoxLayout(modal.window);
    layout->setContentsMargins(0, 0, 0, 0);
    ModalNodes inner;
    layout->addWidget(new DialogArea(create_subtree(view, node, parent, inner).outer));
    layout->setSizeConstraint(QLayout::SetFixedSize);
    modal.window->setWindowTitle(view.root->windowTitle());
    for (const RenderNode& child : node.children)
        float_overlays(view, child);
    close_modal(view, node.path);
    ModalWindow& kept = view.overlays.modals[node.path] = modal;
    if (view.root->isVisible())
        open_modal(view, node.path, kept);
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
            open_modal(view, path, entry->second);
    focus_opened_dialogs(view);
}

void name_modals(ViewState& view) {
    for (const auto& [path, modal] : view.overlays.modals) {
        const DNode* title = view.find(path + TITLE);
        if (modal.window && title && title->label && !title->label->text().isEmpty())
            modal.window->setWindowTitle(title->label->text());
    }
}

void resize_scrims(ViewState& view) {
    for (const auto& [path, modal] : view.overlays.modals)
        if (modal.scrim)
            modal.scrim->setGeometry(view.root->rect());
}

} // namespace Corvel
