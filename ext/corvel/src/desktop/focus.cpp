#include "desktop/focus.h"

#include "desktop/desktop_view_p.h"
#include "desktop/tab_order.h"
#include "desktop/widgets/root_container.h"
#include "desktop/widgets/vbox_widget.h"

#include <QApplication>
#include <QLineEdit>

#include <utility>

namespace Corvel {

namespace {

/// The node whose button `widget` is, null if it is none.
const DNode* button_of(const ViewState& view, QWidget* widget) {
    const auto* box = qobject_cast<VBoxWidget*>(widget);
    if (!box || !box->on_click)
        return nullptr;
    for (QWidget* above = widget; above; above = above->parentWidget())
        if (const DNode* dnode = view.find_dnode_by_widget(above))
            return dnode->box == box ? dnode : nullptr;
    return nullptr;
}

} // namespace

FocusPlace::FocusPlace(ViewState& view)
    : view_(view)
    , widget_(QApplication::focusWidget() ? QApplication::focusWidget()
                                          : view.root->focusWidget()) {
    if (const DNode* dnode = button_of(view, widget_))
        path_ = *dnode->path;
}

void FocusPlace::restore() {
    if (!view_.root)
        return;
    const DNode* again = path_.empty() ? nullptr : view_.find(path_);
    if (again && again->box && again->box != widget_ &&
        (!QApplication::focusWidget() || QApplication::focusWidget()->isWindow()))
        again->box->setFocus(Qt::OtherFocusReason);
    if (!view_.root->focusWidget())
        view_.root->setFocus(Qt::OtherFocusReason);
}

void leave_fields(ViewState& view, const QWidget& except) {
    const QWidget* focus = view.root->focusWidget();
    if (focus && focus != view.root && !except.isAncestorOf(focus))
        view.root->setFocus(Qt::OtherFocusReason);
}

void focus_opened_dialogs(ViewState& view) {
    for (const std::string& path : std::exchange(view.overlays.opened_modals, {})) {
        const auto modal = view.overlays.modals.find(path);
        const DNode* dnode = view.find(path);
        if (!dnode || modal == view.overlays.modals.end() || !modal->second.window)
            continue;
        QWidget* field = first_field(view, *dnode);
        if (!field)
            field = modal->second.window;
        field->setFocus(Qt::OtherFocusReason);
        if (auto* line = qobject_cast<QLineEdit*>(field))
            line->selectAll();
    }
}

} // namespace Corvel
