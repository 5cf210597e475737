#include "desktop/layout.h"

#include "desktop/desktop_view_p.h"
#include "desktop/focus_keeper.h"
#include "desktop/layout_math.h"
#include "desktop/max_width_container.h"
#include "desktop/scroll_host.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/wrap_label.h"

#include <QBoxLayout>
#include <QLayoutItem>
#include <QMargins>
#include <QScrollArea>

#include <algorithm>
#include <memory>
#include <vector>

namespace Corvel {

namespace {

QBoxLayout::Direction qt_direction(BoxDirection direction) {
    if (direction.row)
        return direction.reverse ? QBoxLayout::RightToLeft : QBoxLayout::LeftToRight;
    return direction.reverse ? QBoxLayout::BottomToTop : QBoxLayout::TopToBottom;
}

/// A margin or a spacing as a layout takes it: for one below 0 it would put in a default of its
/// own.
int gap(int pixels) {
    return std::max(pixels, 0);
}

QMargins outer_margins(const NodeStyle& style) {
    return {gap(whole_pixels(style.margin_left)), gap(whole_pixels(style.margin_top)),
            gap(whole_pixels(style.margin_right)), gap(whole_pixels(style.margin_bottom))};
}

bool needs_margins(const NodeStyle& style) {
    return style.margin_left > 0 || style.margin_top > 0 || style.margin_right > 0 ||
           style.margin_bottom > 0;
}

/// A side panel handles its width itself.
bool needs_max_width(const NodeStyle& style) {
    return style.max_width > 0 && style.overlay != "SideSheet";
}

MaxWidthContainer* container_of(QWidget* outer) {
    return qobject_cast<MaxWidthContainer*>(outer);
}

/// Records the box's part of the style and gives it to the layout.
void apply_box_style(DNode& dnode, const NodeStyle& style) {
    const BoxDirection direction = box_direction(style.layout_direction);
    const int border = whole_pixels(style.border_thickness);
    const int spacing = gap(whole_pixels(style.layout_spacing));
    dnode.arrangement.is_row = direction.row;
    dnode.arrangement.align = style.layout_align;
    dnode.arrangement.justify = style.layout_justify;
    dnode.arrangement.scrolls = !style.layout_scroll.empty();
    dnode.arrangement.inset = border;
    dnode.arrangement.inset_bottom = gap(border + whole_pixels(style.padding_bottom));
    dnode.layout->setDirection(qt_direction(direction));
    dnode.layout->setContentsMargins(
        gap(whole_pixels(style.padding_left) + border),
        gap(whole_pixels(style.padding_top) + border),
        gap(whole_pixels(style.padding_right) + border - bar_room(style)),
        dnode.arrangement.inset_bottom + dnode.arrangement.reserved_bottom);
    if (dnode.layout->spacing() != spacing)
        dnode.layout->setSpacing(spacing);
}

/// A child without a record is the box's own caption.
int item_stretch(const ViewState& view, const DNode& parent, QWidget* outer) {
    const DNode* child = view.find_dnode_by_widget(outer);
    return child ? stretch_of(child->grow, parent.arrangement.is_row, container_of(outer)) : 0;
}

/// Brings the items of a layout up to the box's direction and alignment.
void update_items(ViewState& view, DNode& dnode) {
    bool changed = false;
    for (int index = 0; index < dnode.layout->count(); ++index) {
        QLayoutItem* item = dnode.layout->itemAt(index);
        QWidget* outer = item->widget();
        if (!outer)
            continue;
        MaxWidthContainer* container = container_of(outer);
        const Qt::Alignment wanted = child_alignment(dnode, container);
        if (item->alignment() != wanted) {
            item->setAlignment(wanted);
            changed = true;
        }
        if (!container)
            continue;
        container->set_bounded(dnode.arrangement.is_row);
        dnode.layout->setStretch(index, item_stretch(view, dnode, outer));
    }
    if (changed)
        dnode.layout->invalidate();
}

/// Takes every widget out of a layout, in order.
std::vector<QWidget*> take_widgets(QBoxLayout& layout) {
    std::vector<QWidget*> widgets;
    while (const std::unique_ptr<QLayoutItem> item{layout.takeAt(0)})
        if (QWidget* widget = item->widget()) {
            widget->setParent(nullptr);
            widgets.push_back(widget);
        }
    return widgets;
}

/// The presence of scrolling changed: the children move to another parent widget. Only here is
/// the scroll position lost.
void rebuild_box_layout(ViewState& view, DNode& dnode, const NodeStyle& style) {
    const FocusKeeper focus(*dnode.box);
    view.tab_order_stale = true;
    const std::vector<QWidget*> kept = take_widgets(*dnode.layout);
    if (!dnode.arrangement.scroll_area)
        delete dnode.layout;
    drop_scroll_host(view, dnode);
    delete dnode.box->layout();

    QWidget* host = dnode.box;
    if (!style.layout_scroll.empty())
        host = make_scroll_host(view, dnode, style);
    dnode.layout = new QBoxLayout(QBoxLayout::TopToBottom, host);
    apply_box_style(dnode, style);
    const Stretches stretches =
        stretches_of(dnode.arrangement.fill, dnode.arrangement.scrolls, dnode.arrangement.justify);
    dnode.layout->addStretch(stretches.leading);
    dnode.arrangement.leading_items = dnode.label ? 2 : 1;
    for (QWidget* outer : kept) {
        dnode.layout->addWidget(outer, item_stretch(view, dnode, outer),
                                child_alignment(dnode, container_of(outer)));
        outer->show();
    }
    add_trailing_stretch(dnode);
    if (dnode.arrangement.scroll_area) {
        host->show();
        dnode.arrangement.scroll_area->show();
    }
}

/// The need for a wrapper changed: takes the old ones away and makes the new ones, at the same
/// place in the layout.
void rewrap_node(ViewState& view, DNode& dnode, const NodeStyle& style) {
    QBoxLayout* layout = dnode.parent ? dnode.parent->layout : view.root_layout;
    const int index = layout ? layout->indexOf(dnode.outer) : -1;
    if (index < 0)
        return;
    const FocusKeeper focus(*dnode.widget);
    view.tab_order_stale = true;
    const int stretch = layout->stretch(index);
    const Qt::Alignment alignment = layout->itemAt(index)->alignment();
    layout->removeWidget(dnode.outer);
    dnode.widget->setParent(nullptr);
    dnode.margin_layout = nullptr;
    view.by_outer.erase(dnode.outer);
    if (dnode.outer != dnode.widget) {
        if (MaxWidthContainer* container = container_of(dnode.outer))
            container->release();
        dnode.outer->hide();
        dnode.outer->deleteLater();
    }
    wrap_widget(view, dnode, style);
    if (MaxWidthContainer* container = container_of(dnode.outer))
        container->set_bounded(dnode.parent && dnode.parent->arrangement.is_row);
    layout->insertWidget(index, dnode.outer, stretch, alignment);
    dnode.widget->show();
    dnode.outer->show();
}

void place_child(DNode& parent, const DNode& child, int place, const NodeStyle& style) {
    const bool limited = style.max_width > 0;
    if (MaxWidthContainer* container = container_of(child.outer);
        container && parent.arrangement.is_row)
        container->set_bounded(true);
    parent.layout->insertWidget(place, child.outer,
                                stretch_of(style.layout_grow, parent.arrangement.is_row, limited),
                                child_alignment(parent, limited));
}

} // namespace

Qt::Alignment alignment_of(bool is_row, const std::string& align) {
    if (align == "Stretch")
        return {};
    if (align == "Start")
        return is_row ? Qt::AlignTop : Qt::AlignLeft;
    if (align == "End")
        return is_row ? Qt::AlignBottom : Qt::AlignRight;
    return is_row ? Qt::AlignVCenter : Qt::AlignHCenter;
}

Qt::Alignment child_alignment(const DNode& parent, bool width_limited) {
    return width_limited ? Qt::Alignment()
                         : alignment_of(parent.arrangement.is_row, parent.arrangement.align);
}

void build_box_layout(ViewState& view, DNode& dnode, const RenderNode& node) {
    const NodeStyle& style = node.style;
    QWidget* host = dnode.box;
    if (!style.layout_scroll.empty())
        host = make_scroll_host(view, dnode, style);
    dnode.layout = new QBoxLayout(QBoxLayout::TopToBottom, host);
    apply_box_style(dnode, style);
    for (const RenderNode& child : node.children)
        if (child.style->layout_grow != 0 && child.style->overlay != "Modal" &&
            !(dnode.arrangement.is_row && child.style->max_width > 0))
            dnode.arrangement.fill = true;
    dnode.layout->addStretch(
        stretches_of(dnode.arrangement.fill, dnode.arrangement.scrolls, dnode.arrangement.justify)
            .leading);
    dnode.arrangement.leading_items = 1;
}

void add_trailing_stretch(DNode& dnode) {
    dnode.arrangement.trailing_stretch =
        stretches_of(dnode.arrangement.fill, dnode.arrangement.scrolls, dnode.arrangement.justify)
            .trailing;
    dnode.layout->addStretch(dnode.arrangement.trailing_stretch);
}

void update_box_layout(ViewState& view, DNode& dnode, const NodeStyle& style) {
    if (dnode.arrangement.scrolls != !style.layout_scroll.empty())
        rebuild_box_layout(view, dnode, style);
    else
        apply_box_style(dnode, style);
    update_items(view, dnode);
    rebalance_stretches(dnode);
}

void rebalance_stretches(DNode& dnode) {
    if (!dnode.layout || dnode.layout->count() < 2)
        return;
    dnode.arrangement.fill = false;
    for (int index = 0; index < dnode.layout->count() && !dnode.arrangement.fill; ++index) {
        QWidget* outer = dnode.layout->itemAt(index)->widget();
        dnode.arrangement.fill = outer && dnode.layout->stretch(index) > 0 &&
                                 !(dnode.arrangement.is_row && container_of(outer));
    }
    const Stretches stretches =
        stretches_of(dnode.arrangement.fill, dnode.arrangement.scrolls, dnode.arrangement.justify);
    dnode.layout->setStretch(0, stretches.leading);
    dnode.layout->setStretch(dnode.layout->count() - 1, stretches.trailing);
    dnode.arrangement.trailing_stretch = stretches.trailing;
}

void apply_stretch_in_parent(ViewState& view, DNode& dnode) {
    DNode* parent = dnode.parent;
    const int index = parent && parent->layout ? parent->layout->indexOf(dnode.outer) : -1;
    if (index < 0)
        return;
    parent->layout->setStretch(
        index, stretch_of(dnode.grow, parent->arrangement.is_row, container_of(dnode.outer)));
    view.queue.unbalanced.insert(parent);
}

void append_child(DNode& parent, const DNode& child, const NodeStyle& style) {
    place_child(parent, child, parent.layout->count(), style);
}

void insert_child(DNode& parent, const DNode& child, long long index, const NodeStyle& style) {
    place_child(parent, child,
                layout_index(index, parent.arrangement.leading_items,
                             parent.arrangement.floating_children, parent.layout->count()),
                style);
}

void wrap_widget(ViewState& view, DNode& dnode, const NodeStyle& style) {
    dnode.outer = dnode.widget;
    if (needs_margins(style)) {
        auto* wrapper = new QWidget;
        dnode.margin_layout = new QVBoxLayout(wrapper);
        dnode.margin_layout->setContentsMargins(outer_margins(style));
        dnode.margin_layout->setSpacing(0);
        dnode.margin_layout->addWidget(dnode.widget);
        dnode.outer = wrapper;
    }
    if (needs_max_width(style))
        dnode.outer = new MaxWidthContainer(dnode.outer, whole_pixels(style.max_width));
    view.by_outer[dnode.outer] = &dnode;
}

void update_wrappers(ViewState& view, DNode& dnode, const NodeStyle& style) {
    MaxWidthContainer* container = container_of(dnode.outer);
    const bool fits = needs_margins(style) == (dnode.margin_layout != nullptr) &&
                      needs_max_width(style) == (container != nullptr);
    if (!fits && !dnode.overlay.is_bar()) {
        rewrap_node(view, dnode, style);
        return;
    }
    if (dnode.margin_layout)
        dnode.margin_layout->setContentsMargins(outer_margins(style));
    if (container && style.max_width > 0)
        container->set_max_width(whole_pixels(style.max_width));
}

void reserve_bottom(DNode& host, int pixels) {
    host.arrangement.reserved_bottom = gap(pixels);
    if (!host.layout)
        return;
    QMargins margins = host.layout->contentsMargins();
    margins.setBottom(host.arrangement.inset_bottom + host.arrangement.reserved_bottom);
    host.layout->setContentsMargins(margins);
}

} // namespace Corvel
