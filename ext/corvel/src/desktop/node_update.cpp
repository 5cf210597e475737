#include "desktop/node_update.h"

#include "desktop/collapse.h"
#include "desktop/desktop_view_p.h"
#include "desktop/layout.h"
#include "desktop/opacity.h"
#include "desktop/overlays.h"
#include "desktop/widgets/combo_widget.h"
#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/icon_widget.h"
#include "desktop/widgets/markdown_widget.h"
#include "desktop/widgets/media_widget.h"
#include "desktop/widgets/qr_widget.h"
#include "desktop/widgets/sizing.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/wrap_label.h"
#include "runtime/corvel_app.h"

#include <array>
#include <cstddef>

namespace Corvel {

namespace {

void update_label(const DNode& dnode, const RenderNode& node) {
    dnode.label->setText(qt_text(node.text));
    dnode.label->set_color(node.style->text_color);
}

void update_text(ViewState&, DNode& dnode, const RenderNode& node) {
    update_label(dnode, node);
    apply_fixed_size(dnode.widget, node.style);
}

void update_box(ViewState& view, DNode& dnode, const RenderNode& node) {
    if (dnode.label)
        update_label(dnode, node);
    if (dnode.kind == NodeKind::CheckBox)
        dnode.box->set_checked(view.app->is_checked(node.path));
    apply_fixed_size(dnode.widget, node.style);
}

void update_icon(ViewState&, DNode& dnode, const RenderNode& node) {
    IconWidget& icon = *dnode.icon;
    const NodeStyle& style = node.style;
    if (icon.source != style.source) {
        icon.color = style.text_color;
        icon.set_source(style.source);
    } else if (icon.color != style.text_color) {
        icon.set_color(style.text_color);
    }
    icon.set_fit(style.fit);
    icon.set_rotation(style.rotation);
    apply_icon_size(&icon, style);
}

void update_editor(ViewState&, DNode& dnode, const RenderNode& node) {
    apply_editor_style(dnode.editor, node.style, node.style->placeholder, node.text, false);
    apply_fixed_size(dnode.widget, node.style);
}

void update_combo(ViewState&, DNode& dnode, const RenderNode& node) {
    apply_combo_style(dnode.combo, node.style, node.items, node.selected);
    apply_fixed_size(dnode.widget, node.style);
}

void update_media(ViewState&, DNode& dnode, const RenderNode& node) {
    dnode.media->apply_style(node.style);
    dnode.media->set_source(node.style->effective_source);
    apply_media_size(dnode.media, node.style);
}

void update_markdown(ViewState&, DNode& dnode, const RenderNode& node) {
    apply_markdown_style(dnode.markdown, node.style);
    dnode.markdown->set_source_text(node.text);
}

void update_qr(ViewState&, DNode& dnode, const RenderNode& node) {
    dnode.qr->set_style(node.style);
    dnode.qr->set_data(node.style->data);
    apply_fixed_size(dnode.widget, node.style);
}

using Updater = void (*)(ViewState&, DNode&, const RenderNode&);

/// Content and size of each kind, in the order of `NodeKind`.
constexpr std::array<Updater, 14> UPDATERS = {
    update_box,   update_text,  update_box,      update_icon,  update_editor,
    update_media, update_media, update_markdown, update_qr,    update_box,
    update_box,   update_box,   update_box,      update_combo,
};
static_assert(UPDATERS.size() == static_cast<std::size_t>(NodeKind::ComboBox) + 1);

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
    dnode.grow = style.layout_grow;
    dnode.own_opacity = style.opacity;
    propagate_opacity(view, dnode);
    if (dnode.box)
        dnode.box->set_style(node.style);
    if (dnode.layout)
        update_box_layout(view, dnode, style);
    update_wrappers(view, dnode, style);
    UPDATERS[static_cast<std::size_t>(dnode.kind)](view, dnode, node);
    note_fixed_height(dnode);
    if (can_collapse(dnode))
        apply_collapsed(view, dnode, style.collapsed);
    apply_stretch_in_parent(dnode);
    update_overlay(view, dnode, style);
}

void set_editor_text(ViewState& view, const RenderPatch& patch) {
    const DNode* dnode = view.find(patch.path);
    if (dnode && dnode->editor)
        dnode->editor->push_text(patch.node.text);
}

} // namespace Corvel
