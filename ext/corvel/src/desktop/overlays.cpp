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
    dnode.bar_no_reserve = style.overlay != "PinnedBottom";
    dnode.bar_modal_sheet = style.overlay == "ModalSheet";
    float_bar(view, dnode, style.offset_y);
}

/// Where a floating node is, or is on its way to.
double aim_of(const DNode& dnode) {
    if (dnode.overlay_animating)
        return dnode.overlay_target;
    return dnode.bar_floating ? dnode.bar_position : dnode.side_position;
}

void update_bar(ViewState& view, DNode& dnode, const NodeStyle& style) {
    if (!dnode.bar_floating)
        float_as_bar(view, dnode, style);
    else if (style.overlay != "BottomSheet" && style.offset_y != aim_of(dnode))
        animate_overlay(view, dnode, dnode.bar_position, style.offset_y);
}

void update_side(ViewState& view, DNode& dnode, const NodeStyle& style) {
    if (!dnode.side_floating) {
        float_side(view, dnode, style.offset_x, style.max_width);
        return;
    }
    dnode.side_max_width = style.max_width;
    if (style.offset_x != aim_of(dnode))
        animate_overlay(view, dnode, dnode.side_position, style.offset_x);
    else
        move_side(view, dnode, dnode.side_position);
}

void move_overlay(ViewState& view, DNode& dnode, double position) {
    if (dnode.bar_floating)
        move_bar(view, dnode, position);
    else
        move_side(view, dnode, position);
}

void show_overlay(DNode& dnode) {
    if (dnode.bar_floating)
        show_bar(dnode);
    else
        show_side(dnode);
}

/// Keeps the overlays above the other children of their hosts, in the order of their paths. Only
/// what is out of place is raised: raising repaints.
void restack(ViewState& view) {
    std::map<DNode*, std::vector<QWidget*>> stacks;
    for (const std::string& path : view.floating) {
        DNode* dnode = view.find(path);
        DNode* host = dnode ? host_of(view, *dnode) : nullptr;
        if (!host)
            continue;
        if (dnode->side_scrim)
            stacks[host].push_back(dnode->side_scrim);
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
    const bool current =
        dnode && (dnode->bar_floating || dnode->side_floating) && dnode->overlay_animation == slide;
    return current ? dnode : nullptr;
}

} // namespace

DNode* host_of(ViewState& view, const DNode& dnode) {
    DNode* host = view.find(dnode.host_path);
    return host && host->box ? host : nullptr;
}

bool float_node(ViewState& view, DNode& dnode) {
    DNode* host = dnode.parent;
    // A modal window stays one to the end of its node.
    if (!host || !host->box || view.modals.contains(*dnode.path))
        return false;
    const FocusKeeper focus(*dnode.outer);
    view.tab_order_stale = true;
    dnode.host_path = *host->path;
    host->box->on_resize = [&view] { position_overlays(view); };
    if (host->layout)
        host->layout->removeWidget(dnode.outer);
    dnode.outer->setParent(host->box);
    dnode.outer->show();
    dnode.overlay_animating = false;
    ++host->floating_children;
    view.floating.insert(*dnode.path);
    rebalance_stretches(*host);
    return true;
}

void leave_host(ViewState& view, DNode& dnode) {
    if (!dnode.bar_floating && !dnode.side_floating)
        return;
    stop_overlay_animation(dnode);
    view.floating.erase(*dnode.path);
    if (dnode.side_scrim) {
        dnode.side_scrim->hide();
        dnode.side_scrim->deleteLater();
        dnode.side_scrim = nullptr;
    }
    if (DNode* host = host_of(view, dnode)) {
        host->floating_children = std::max(host->floating_children - 1, 0);
        if (dnode.bar_floating && !dnode.bar_no_reserve)
            reserve_bottom(*host, 0);
    }
    dnode.bar_floating = false;
    dnode.side_floating = false;
    dnode.host_path.clear();
}

void set_effect_opacity(QGraphicsOpacityEffect* effect, double opacity) {
    effect->setOpacity(opacity);
    effect->setEnabled(opacity < 1);
}

void stop_overlay_animation(DNode& dnode) {
    dnode.overlay_animating = false;
    if (dnode.overlay_animation)
        dnode.overlay_animation->stop();
    dnode.overlay_animation = nullptr;
}

// The callbacks look the node up by its path: it may have died, or died and come back, meanwhile.
void animate_overlay(ViewState& view, DNode& dnode, double from, double to) {
    stop_overlay_animation(dnode);
    dnode.outer->setVisible(true);
    if (dnode.side_scrim)
        dnode.side_scrim->setVisible(true);
    auto* slide = new QVariantAnimation(view.root);
    slide->setDuration(SLIDE_MS);
    slide->setEasingCurve(QEasingCurve::InOutQuad);
    slide->setStartValue(from);
    slide->setEndValue(to);
    dnode.overlay_animation = slide;
    dnode.overlay_target = to;
    dnode.overlay_animating = true;
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
        moved->overlay_animating = false;
        moved->overlay_animation = nullptr;
    });
    slide->start(QAbstractAnimation::DeleteWhenStopped);
}

void float_overlays(ViewState& view, const RenderNode& node) {
    const NodeStyle& style = node.style;
    if (is_bar(style.overlay)) {
        if (DNode* dnode = view.find(node.path); dnode && !dnode->bar_floating)
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
    else if (dnode.bar_floating)
        settle_bar(view, dnode, style);
}

void position_overlays(ViewState& view) {
    // Moving an overlay resizes it, and it may itself be a host: its own overlays come later in
    // this very walk, since paths sort behind those of their ancestors.
    if (view.floating.empty() || view.positioning)
        return;
    view.positioning = true;
    for (const std::string& path : view.floating) {
        DNode* dnode = view.find(path);
        if (!dnode || dnode->overlay_animating)
            continue;
        move_overlay(view, *dnode,
                     dnode->bar_floating ? dnode->bar_position : dnode->side_position);
        show_overlay(*dnode);
    }
    restack(view);
    view.positioning = false;
}

bool any_overlay_animating(ViewState& view) {
    return std::any_of(view.floating.begin(), view.floating.end(),
                       [&view](const std::string& path) {
                           const DNode* dnode = view.find(path);
                           return dnode && dnode->overlay_animating;
                       });
}

} // namespace Corvel
