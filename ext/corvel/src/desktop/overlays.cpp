#include "desktop/overlays.h"

#include "desktop/desktop_view_p.h"
#include "desktop/focus_keeper.h"
#include "desktop/layout.h"
#include "desktop/overlays_p.h"
#include "desktop/widgets/root_container.h"
#include "desktop/widgets/vbox_widget.h"

#include <QBoxLayout>
#include <QEasingCurve>
#include <QGraphicsOpacityEffect>
#include <QVariantAnimation>

#include <algorithm>
#include <map>
#include <vector>

namespace Corvel {

namespace {

constexpr int SLIDE_MS = 200;

bool is_bar(const std::string& overlay) {
    return overlay == "PinnedBottom" || overlay == "BottomSheet" || overlay == "ModalSheet";
}

void float_as_bar(ViewState& view, DNode& dnode, const NodeStyle& style) {
    dnode.overlay.no_reserve = style.overlay != "PinnedBottom";
    float_bar(view, dnode, style.offset_y);
}

/// Where a floating node is, or is on its way to.
double aim_of(const DNode& dnode) {
    return dnode.overlay.sliding ? dnode.overlay.target : dnode.overlay.position;
}

void update_bar(ViewState& view, DNode& dnode, const NodeStyle& style) {
    if (!dnode.overlay.is_bar())
        float_as_bar(view, dnode, style);
    else if (style.overlay != "BottomSheet" && style.offset_y != aim_of(dnode))
        animate_overlay(view, dnode, dnode.overlay.position, style.offset_y);
}

void update_side(ViewState& view, DNode& dnode, const NodeStyle& style) {
    if (!dnode.overlay.is_side()) {
        float_side(view, dnode, style.offset_x, style.max_width);
        return;
    }
    dnode.overlay.max_width = style.max_width;
    if (style.offset_x != aim_of(dnode))
        animate_overlay(view, dnode, dnode.overlay.position, style.offset_x);
    else
        move_side(view, dnode, dnode.overlay.position);
}

void move_overlay(ViewState& view, DNode& dnode, double position) {
    if (dnode.overlay.is_bar())
        move_bar(view, dnode, position);
    else
        move_side(view, dnode, position);
}

void show_overlay(DNode& dnode) {
    if (dnode.overlay.is_bar())
        show_bar(dnode);
    else
        show_side(dnode);
}

/// Keeps the overlays above the other children of their hosts, in the order of their paths. Only
/// what is out of place is raised: raising repaints.
void restack(ViewState& view) {
    std::map<DNode*, std::vector<QWidget*>> stacks;
    for (const std::string& path : view.overlays.floating) {
        DNode* dnode = view.find(path);
        DNode* host = dnode ? host_of(view, *dnode) : nullptr;
        if (!host)
            continue;
        if (dnode->overlay.scrim)
            stacks[host].push_back(dnode->overlay.scrim);
        stacks[host].push_back(dnode->outer);
    }
    for (auto& [host, wanted] : stacks) {
        auto next = wanted.rbegin();
        const QObjectList& children = host->box->children();
        for (auto child = children.rbegin(); child != children.rend() && next != wanted.rend();
             ++child) {
            if (!(*child)->isWidgetType())
                continue;
            if (*child != *next)
                break;
            ++next;
        }
        if (next != wanted.rend())
            for (QWidget* overlay : wanted)
                overlay->raise();
    }
}

/// The node that `slide` moves, null if it is gone, no longer floats or slides otherwise by now.
DNode* sliding_node(ViewState& view, const std::string& path, const QVariantAnimation* slide) {
    DNode* dnode = view.find(path);
    const bool current = dnode && dnode->overlay.floats() && dnode->overlay.slide == slide;
    return current ? dnode : nullptr;
}

} // namespace

DNode* host_of(ViewState& view, const DNode& dnode) {
    DNode* host = view.find(dnode.overlay.host_path);
    return host && host->box ? host : nullptr;
}

bool float_node(ViewState& view, DNode& dnode) {
    DNode* host = dnode.parent;
    // A modal window stays one to the end of its node.
    if (!host || !host->box || view.overlays.modals.contains(*dnode.path))
        return false;
    const FocusKeeper focus(*dnode.outer);
    view.tab_order_stale = true;
    dnode.overlay.host_path = *host->path;
    host->box->on_resize = [&view] { position_overlays(view); };
    if (host->layout)
        host->layout->removeWidget(dnode.outer);
    dnode.outer->setParent(host->box);
    dnode.outer->show();
    dnode.overlay.sliding = false;
    ++host->arrangement.floating_children;
    view.overlays.floating.insert(*dnode.path);
    rebalance_stretches(*host);
    return true;
}

void leave_host(ViewState& view, DNode& dnode) {
    if (!dnode.overlay.floats())
        return;
    stop_overlay_animation(dnode);
    view.overlays.floating.erase(*dnode.path);
    if (dnode.overlay.scrim) {
        dnode.overlay.scrim->hide();
        dnode.overlay.scrim->deleteLater();
        dnode.overlay.scrim = nullptr;
    }
    if (DNode* host = host_of(view, dnode)) {
        host->arrangement.floating_children = std::max(host->arrangement.floating_children - 1, 0);
        if (dnode.overlay.is_bar() && !dnode.overlay.no_reserve)
            reserve_bottom(*host, 0);
    }
    dnode.overlay.kind = OverlayKind::None;
    dnode.overlay.host_path.clear();
}

void set_effect_opacity(QGraphicsOpacityEffect* effect, double opacity) {
    effect->setOpacity(opacity);
    effect->setEnabled(opacity < 1);
}

void stop_overlay_animation(DNode& dnode) {
    dnode.overlay.sliding = false;
    if (dnode.overlay.slide)
        dnode.overlay.slide->stop();
    dnode.overlay.slide = nullptr;
}

// The callbacks look the node up by its path: it may have died, or died and come back, meanwhile.
void animate_overlay(ViewState& view, DNode& dnode, double from, double to) {
    stop_overlay_animation(dnode);
    dnode.outer->setVisible(true);
    if (dnode.overlay.scrim)
        dnode.overlay.scrim->setVisible(true);
    auto* slide = new QVariantAnimation(view.root);
    slide->setDuration(SLIDE_MS);
    slide->setEasingCurve(QEasingCurve::InOutQuad);
    slide->setStartValue(from);
    slide->setEndValue(to);
    dnode.overlay.slide = slide;
    dnode.overlay.target = to;
    dnode.overlay.sliding = true;
    const std::string path = *dnode.path;
    QObject::connect(slide, &QVariantAnimation::valueChanged, view.root,
                     [&view, path, slide](const QVariant& value) {
                         if (DNode* moved = sliding_node(view, path, slide))
                             move_overlay(view, *moved, value.toDouble());
                     });
    QObject::connect(slide, &QVariantAnimation::finished, view.root, [&view, path, slide, to] {
        DNode* moved = sliding_node(view, path, slide);
        if (!moved)
            return;
        move_overlay(view, *moved, to);
        show_overlay(*moved);
        // Only now: until it rests, what scrolls in it asks for no render, which could end it.
        moved->overlay.sliding = false;
        moved->overlay.slide = nullptr;
    });
    slide->start(QAbstractAnimation::DeleteWhenStopped);
}

void float_overlays(ViewState& view, const RenderNode& node) {
    const NodeStyle& style = node.style;
    if (is_bar(style.overlay)) {
        if (DNode* dnode = view.find(node.path); dnode && !dnode->overlay.is_bar())
            float_as_bar(view, *dnode, style);
    } else if (style.overlay == "SideSheet") {
        if (DNode* dnode = view.find(node.path))
            float_side(view, *dnode, style.offset_x, style.max_width);
    }
    for (const RenderNode& child : node.children)
        if (!is_modal(child))
            float_overlays(view, child);
}

void update_overlay(ViewState& view, DNode& dnode, const NodeStyle& style) {
    if (style.overlay == "SideSheet")
        update_side(view, dnode, style);
    else if (is_bar(style.overlay))
        update_bar(view, dnode, style);
    else if (dnode.overlay.is_bar())
        settle_bar(view, dnode, style);
}

void position_overlays(ViewState& view) {
    // Moving an overlay resizes it, and it may itself be a host: its own overlays come later in
    // this very walk, since paths sort behind those of their ancestors.
    if (view.overlays.floating.empty() || view.overlays.positioning)
        return;
    view.overlays.positioning = true;
    for (const std::string& path : view.overlays.floating) {
        DNode* dnode = view.find(path);
        if (!dnode || dnode->overlay.sliding)
            continue;
        move_overlay(view, *dnode, dnode->overlay.position);
        show_overlay(*dnode);
    }
    restack(view);
    view.overlays.positioning = false;
}

bool any_overlay_animating(ViewState& view) {
    return std::any_of(view.overlays.floating.begin(), view.overlays.floating.end(),
                       [&view](const std::string& path) {
                           const DNode* dnode = view.find(path);
                           return dnode && dnode->overlay.sliding;
                       });
}

} // namespace Corvel
