#include "desktop/desktop_view_p.h"
#include "desktop/layout_math.h"
#include "desktop/overlays_p.h"
#include "desktop/widgets/vbox_widget.h"

#include <QGraphicsOpacityEffect>

namespace Corvel {

namespace {

constexpr const char* SCRIM_FILL = "#80000000";

/// A press beside the panel is a click on the panel.
void add_scrim(ViewState& view, DNode& dnode, DNode& host) {
    dnode.overlay.scrim = new VBoxWidget(host.box);
    NodeStyle style;
    style.fill.text = SCRIM_FILL;
    dnode.overlay.scrim->set_style(SharedStyle(style));
    dnode.overlay.scrim->setAccessibleName(QStringLiteral("Close"));
    dnode.overlay.scrim->on_click = [&view, path = *dnode.path] { view.click(path); };
    dnode.overlay.scrim_effect = new QGraphicsOpacityEffect;
    dnode.overlay.scrim->setGraphicsEffect(dnode.overlay.scrim_effect);
    dnode.overlay.scrim->show();
}

} // namespace

void float_side(ViewState& view, DNode& dnode, double position, double max_width) {
    if (dnode.overlay.floats() || !float_node(view, dnode))
        return;
    dnode.overlay.max_width = max_width;
    add_scrim(view, dnode, *dnode.parent);
    dnode.overlay.kind = OverlayKind::Side;
    move_side(view, dnode, position);
    dnode.outer->raise();
    dnode.overlay.scrim->stackUnder(dnode.outer);
    show_side(dnode);
}

void move_side(ViewState& view, DNode& dnode, double position) {
    dnode.overlay.position = position;
    const DNode* host = host_of(view, dnode);
    if (!host)
        return;
    const QSize size = host->box->size();
    const Area area = side_area(size.width(), size.height(), host->arrangement.inset,
                                dnode.overlay.max_width, position);
    dnode.outer->setGeometry(area.x, area.y, area.width, area.height);
    if (!dnode.overlay.scrim)
        return;
    const Area scrim = scrim_area(size.width(), size.height(), host->arrangement.inset);
    dnode.overlay.scrim->setGeometry(scrim.x, scrim.y, scrim.width, scrim.height);
    set_effect_opacity(dnode.overlay.scrim_effect, 1 - position);
}

void show_side(DNode& dnode) {
    const bool shown = dnode.overlay.position < 1.0;
    dnode.outer->setVisible(shown);
    if (dnode.overlay.scrim)
        dnode.overlay.scrim->setVisible(shown);
}

} // namespace Corvel
