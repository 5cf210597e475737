#include "desktop/node_create.h"

#include "desktop/collapse.h"
#include "desktop/desktop_view_p.h"
#include "desktop/layout.h"
#include "desktop/node_kinds.h"
#include "desktop/opacity.h"
#include "desktop/overlays.h"

#include <QWidget>

#include <cstddef>
#include <cstdint>

namespace Corvel {

namespace {

/// The record to fill for a path. One that exists is given up: its widgets stay where they are,
/// without a record.
DNode& fresh_record(ViewState& view, const std::string& path) {
    const auto [entry, added] = view.nodes.try_emplace(path);
    if (!added) {
        leave_host(view, entry->second);
        view.by_outer.erase(entry->second.outer);
        entry->second = DNode();
    }
    entry->second.path = &entry->first;
    return entry->second;
}

} // namespace

DNode& create_widget(ViewState& view, const RenderNode& node, DNode* parent) {
    DNode& dnode = fresh_record(view, node.path);
    const NodeStyle& style = node.style;
    ++view.queue.nodes_made;
    dnode.kind = node.kind;
    dnode.parent = parent;
    dnode.grow = style.layout_grow;
    operations_of(node.kind).make(view, node, dnode);
    dnode.widget->setObjectName(qt_text(node.name));
    wrap_widget(view, dnode, style);
    note_fixed_height(dnode);
    dnode.fold.collapsed = style.collapsed;
    if (dnode.fold.collapsed)
        set_collapsed_limits(dnode);
    dnode.own_opacity = style.opacity;
    propagate_opacity(view, dnode);
    if (dnode.editor || dnode.combo || dnode.markdown || dnode.widget->focusPolicy() != Qt::NoFocus)
        view.tab_order_stale = true;
    return dnode;
}

DNode& create_subtree(ViewState& view, const RenderNode& node, DNode* parent, ModalNodes& modals) {
    DNode& dnode = create_widget(view, node, parent);
    for (std::size_t index = 0; index < node.children.size(); ++index) {
        const RenderNode& child = node.children[index];
        if (is_modal(child)) {
            modals.push_back({&child, &dnode});
            continue;
        }
        if (view.put_off(index)) {
            view.queue.later.push_back(
                {PatchKind::Add, child.path, node.path, static_cast<std::int64_t>(index), child});
            continue;
        }
        const DNode& made = create_subtree(view, child, &dnode, modals);
        if (dnode.layout)
            append_child(dnode, made, child.style);
    }
    if (dnode.layout)
        add_trailing_stretch(dnode);
    return dnode;
}

void create_modals(ViewState& view, const ModalNodes& modals) {
    for (const ModalNode& modal : modals)
        create_modal(view, *modal.node, modal.parent);
}

} // namespace Corvel
