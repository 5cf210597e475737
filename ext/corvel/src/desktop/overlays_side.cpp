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
    dnode.side_scrim = new VBoxWidget(host.box);
    NodeStyle style;
    style.fill.text = SCRIM_FILL;
    dnode.side_scrim->set_style(SharedStyle(style));
    dnode.side_scrim->setAccessibleName(QStringLiteral("Close"));
    dnode.side_scrim->on_click = [&view, path = *dnode.path] { view.click(path); };
    dnode.side_scrim_effect = new QGraphicsOpacityEffect;
    dnode.side_scrim->setGraphicsEffect(dnode.side_scrim_effect);
    dnode.side_scrim->show();
}

} // namespace

void float_side(ViewState& view, DNode& dnode, double position, double max_width) {
    if (dnode.side_floating || dnode.bar_floating || !float_node(view, dnode))
        return;
    dnode.side_max_width = max_width;
    add_scrim(view, dnode, *dnode.parent);
    dnode.side_floating = true;
    move_side(view, dnode, position);
    dnode.outer->raise();
    dnode.side_scrim->stackUnder(dnode.outer);
    show_side(dnode);
}

void move_side(ViewState& view, DNode& dnode, double position) {
    dnode.side_position = position;
    const DNode* host = host_of(view, dnode);
    if (!host)
        return;
    const QSize size = host->box->size();
    const Area area =
        side_area(size.width(), size.height(), host->inset, dnode.side_max_width, position);
    dnode.outer->setGeometry(area.x, area.y, area.width, area.height);
    if (!dnode.side_scrim)
        return;
    const Area scrim = scrim_area(size.width(), size.height(), host->inset);
    dnode.side_scrim->setGeometry(scrim.x, scrim.y, scrim.width, scrim.height);
    set_effect_opacity(dnode.side_scrim_effect, 1 - position);
}

void show_side(DNode& dnode) {
    const bool shown = dnode.side_position < 1.0;
    dnode.outer->setVisible(shown);
    if (dnode.side_scrim)
        dnode.side_scrim->setVisible(shown);
}

} // namespace Corvel
