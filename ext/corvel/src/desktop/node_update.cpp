#include "desktop/node_update.h"

#include "desktop/collapse.h"
#include "desktop/desktop_view_p.h"
#include "desktop/layout.h"
#include "desktop/node_kinds.h"
#include "desktop/opacity.h"
#include "desktop/overlays.h"
#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/vbox_widget.h"

namespace Corvel {

namespace {

bool can_collapse(const DNode& dnode) {
    return !dnode.icon && !dnode.editor && !dnode.combo && !dnode.markdown;
}

} // namespace

// The steps are in a fixed order: later ones read what earlier ones wrote.
void update_node(ViewState& view, const RenderPatch& patch) {
    DNode* found = view.find(patch.path);
    if (!found)
        return;
    DNode& dnode = *found;
    const RenderNode& node = patch.node;
    const NodeStyle& style = node.style;
    const bool grows_otherwise = dnode.grow != style.layout_grow;
    const QWidget* outer = dnode.outer;
    dnode.grow = style.layout_grow;
    dnode.own_opacity = style.opacity;
    propagate_opacity(view, dnode);
    if (dnode.box)
        dnode.box->set_style(node.style);
    if (dnode.layout)
        update_box_layout(view, dnode, style);
    update_wrappers(view, dnode, style);
    operations_of(dnode.kind).update(view, dnode, node);
    note_fixed_height(dnode);
    if (can_collapse(dnode))
        apply_collapsed(view, dnode, style.collapsed);
    if (grows_otherwise || dnode.outer != outer)
        apply_stretch_in_parent(view, dnode);
    update_overlay(view, dnode, style);
}

void set_editor_text(ViewState& view, const RenderPatch& patch) {
    const DNode* dnode = view.find(patch.path);
    if (dnode && dnode->editor)
        dnode->editor->push_text(patch.node.text);
}

} // namespace Corvel
