#include "desktop/desktop_view_p.h"
#include "desktop/focus_keeper.h"
#include "desktop/layout.h"
#include "desktop/layout_math.h"
#include "desktop/max_width_container.h"
#include "desktop/overlays.h"
#include "desktop/overlays_p.h"
#include "desktop/widgets/vbox_widget.h"

#include <QBoxLayout>
#include <QGraphicsOpacityEffect>

#include <algorithm>

namespace Corvel {

namespace {

/// The height that a bar takes at a width, within what its style allows.
int bar_height(const QWidget& bar, int width) {
    int height = bar.hasHeightForWidth() ? bar.heightForWidth(width) : 0;
    if (height < 1)
        height = bar.sizeHint().height();
    return std::max(std::min(height, bar.maximumHeight()), bar.minimumHeight());
}

} // namespace

void float_bar(ViewState& view, DNode& dnode, double position) {
    if (dnode.overlay.floats())
        return;
    auto* container = qobject_cast<MaxWidthContainer*>(dnode.outer);
    if (container && dnode.overlay.no_reserve && dnode.parent && dnode.parent->box)
        container->set_bounded(false);
    if (!float_node(view, dnode))
        return;
    if (!dnode.overlay.effect) {
        dnode.overlay.effect = new QGraphicsOpacityEffect;
        dnode.outer->setGraphicsEffect(dnode.overlay.effect);
    }
    dnode.overlay.kind = OverlayKind::Bar;
    dnode.outer->raise();
    move_bar(view, dnode, position);
    show_bar(dnode);
}

void move_bar(ViewState& view, DNode& dnode, double position) {
    dnode.overlay.position = position;
    DNode* host = host_of(view, dnode);
    if (!host)
        return;
    const QSize size = host->box->size();
    const int height = bar_height(*dnode.outer, size.width() - 2 * host->arrangement.inset);
    const Area area =
        bar_area(size.width(), size.height(), host->arrangement.inset, height, position);
    dnode.outer->setGeometry(area.x, area.y, area.width, area.height);
    set_effect_opacity(dnode.overlay.effect, 1 - position);
    if (!dnode.overlay.no_reserve)
        reserve_bottom(*host, bar_reserve(height, position));
}

void show_bar(DNode& dnode) {
    dnode.outer->setVisible(dnode.overlay.position < 1.0);
}

void settle_bar(ViewState& view, DNode& dnode, const NodeStyle& style) {
    if (!dnode.overlay.is_bar())
        return;
    const FocusKeeper focus(*dnode.outer);
    view.tab_order_stale = true;
    leave_host(view, dnode);
    dnode.overlay.no_reserve = false;
    dnode.outer->setGraphicsEffect(nullptr);
    dnode.overlay.effect = nullptr;
    dnode.overlay.position = 0;
    dnode.outer->setParent(nullptr);
    if (!dnode.parent || !dnode.parent->layout) {
        dnode.outer->hide();
        return;
    }
    insert_child(*dnode.parent, dnode, 0, style);
    dnode.outer->setVisible(true);
    rebalance_stretches(*dnode.parent);
}

} // namespace Corvel
