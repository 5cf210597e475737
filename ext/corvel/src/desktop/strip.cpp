#include "desktop/strip.h"

#include "desktop/desktop_view_p.h"
#include "desktop/focus.h"
#include "desktop/widgets/root_container.h"
#include "runtime/corvel_app.h"

#include <QLayout>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>

namespace Corvel {

namespace {

/// Room shown beside a child that is scrolled to, in pixels.
constexpr int MARGIN = 8;

const DNode* active_child(const ViewState& view, const QScrollArea& strip) {
    const QLayout* layout = strip.widget() ? strip.widget()->layout() : nullptr;
    for (int i = 0; layout && i < layout->count(); ++i) {
        const DNode* child = view.find_dnode_by_widget(layout->itemAt(i)->widget());
        if (child && (view.app->has_state(*child->path, "Active") ||
                      view.app->has_state(*child->path, "Selected")))
            return child;
    }
    return nullptr;
}

} // namespace

StripArea::StripArea(QWidget* parent)
    : QScrollArea(parent) {}

void StripArea::wheelEvent(QWheelEvent* event) {
    const QPoint turn = event->angleDelta();
    QScrollBar* bar = horizontalScrollBar();
    if (turn.x() != 0 || turn.y() == 0 || bar->maximum() == 0) {
        QScrollArea::wheelEvent(event);
        return;
    }
    bar->setValue(bar->value() - turn.y());
    event->accept();
}

void StripArea::reveal(QWidget* child) {
    shown_ = child;
    QTimer::singleShot(0, this, [this] {
        if (shown_)
            ensureWidgetVisible(shown_, MARGIN, 0);
    });
}

void StripArea::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    if (shown_ && event->size().width() < event->oldSize().width())
        reveal(shown_);
}

void watch_strip(ViewState& view, QScrollArea* strip) {
    view.bars.strips.emplace(strip, std::string());
    QObject::connect(strip, &QObject::destroyed, view.root,
                     [&view, strip] { view.bars.strips.erase(strip); });
}

void reveal_active_children(ViewState& view) {
    for (auto& [strip, shown] : view.bars.strips) {
        const DNode* child = active_child(view, *strip);
        if (!child || *child->path == shown)
            continue;
        shown = *child->path;
        // Other things are on the screen now: what is typed blindly must not go into them.
        leave_fields(view, *strip);
        static_cast<StripArea*>(strip)->reveal(child->outer);
    }
}

} // namespace Corvel
