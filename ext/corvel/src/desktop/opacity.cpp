#include "desktop/opacity.h"

#include "desktop/desktop_view_p.h"
#include "desktop/widgets/icon_widget.h"
#include "desktop/widgets/media_widget.h"
#include "desktop/widgets/qr_widget.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/wrap_label.h"

namespace Corvel {

namespace {

void give_opacity(const DNode& dnode) {
    const double opacity = dnode.effective_opacity;
    if (dnode.icon)
        dnode.icon->set_opacity(opacity);
    if (dnode.box)
        dnode.box->set_opacity(opacity);
    if (dnode.media)
        dnode.media->set_opacity(opacity);
    if (dnode.qr)
        dnode.qr->set_opacity(opacity);
    if (dnode.label)
        dnode.label->set_opacity(opacity);
}

/// True if the effective opacity changed.
bool refresh(DNode& dnode) {
    const double above = dnode.parent ? dnode.parent->effective_opacity : 1.0;
    const double effective = above * dnode.own_opacity;
    if (effective == dnode.effective_opacity)
        return false;
    dnode.effective_opacity = effective;
    give_opacity(dnode);
    return true;
}

} // namespace

void propagate_opacity(ViewState& view, DNode& dnode) {
    if (refresh(dnode))
        for_each_below(view.nodes, dnode, [](DNode& below) { refresh(below); });
}

} // namespace Corvel
