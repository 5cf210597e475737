#include "desktop/node_create.h"

#include "desktop/collapse.h"
#include "desktop/desktop_view_p.h"
#include "desktop/layout.h"
#include "desktop/opacity.h"
#include "desktop/overlays.h"
#include "desktop/video_selection.h"
#include "desktop/widgets/combo_widget.h"
#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/icon_widget.h"
#include "desktop/widgets/image_widget.h"
#include "desktop/widgets/markdown_widget.h"
#include "desktop/widgets/qr_widget.h"
#include "desktop/widgets/sizing.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/video_widget.h"
#include "desktop/widgets/wrap_label.h"
#include "desktop/window_intents.h"
#include "runtime/corvel_app.h"

#include <QBoxLayout>
#include <QCursor>

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace Corvel {

namespace {

constexpr int TEXT_PX = 28;
constexpr int CAPTION_PX = 18;

void make_text(ViewState&, const RenderNode& node, DNode& dnode) {
    dnode.label = make_label(node, TEXT_PX);
    dnode.label->setWordWrap(node.style->wrap);
    apply_fixed_size(dnode.label, node.style);
    dnode.widget = dnode.label;
}

void make_icon(ViewState&, const RenderNode& node, DNode& dnode) {
    dnode.icon = new IconWidget(node.style->source);
    dnode.icon->set_color(node.style->text_color);
    dnode.icon->set_fit(node.style->fit);
    dnode.icon->set_rotation(node.style->rotation);
    apply_icon_size(dnode.icon, node.style);
    dnode.widget = dnode.icon;
}

void make_editor(ViewState& view, const RenderNode& node, DNode& dnode) {
    auto* editor = new EditorWidget;
    editor->setObjectName(qt_text(node.name));
    // Until the patches are through, a change of focus is none of the user's doing.
    editor->muted = view.applying;
    apply_editor_style(editor, node.style, node.style->placeholder, node.text, true);
    if (view.app->has_input_value(node.path) && view.app->input_value(node.path) != node.text.get())
        editor->push_text(view.app->input_value(node.path));
    editor->on_text_changed = [&view, path = node.path.get()](const std::string& text) {
        if (view.dispatch(path, "input:" + text))
            view.schedule_render();
    };
    apply_fixed_size(editor, node.style);
    view.editors.insert(editor);
    dnode.editor = editor;
    dnode.box = editor;
    dnode.widget = editor;
}

void make_image(ViewState&, const RenderNode& node, DNode& dnode) {
    dnode.media = new ImageWidget(node.style);
    apply_media_size(dnode.media, node.style);
    dnode.widget = dnode.media;
}

void make_video(ViewState& view, const RenderNode& node, DNode& dnode) {
    auto* video = new VideoWidget(node.style);
    apply_media_size(video, node.style);
    watch_video(view, video);
    dnode.media = video;
    dnode.widget = video;
}

void make_markdown(ViewState&, const RenderNode& node, DNode& dnode) {
    dnode.markdown = new MarkdownWidget;
    apply_markdown_style(dnode.markdown, node.style);
    dnode.markdown->set_source_text(node.text);
    dnode.widget = dnode.markdown;
}

void make_qr(ViewState&, const RenderNode& node, DNode& dnode) {
    dnode.qr = new QrWidget;
    dnode.qr->set_style(node.style);
    dnode.qr->set_data(node.style->data);
    apply_fixed_size(dnode.qr, node.style);
    dnode.widget = dnode.qr;
}

void select(ViewState& view, const std::string& path, const std::string& value) {
    if (!view.dispatch(path, "select:" + value))
        return;
    view.render_now();
    // The handler may have taken the choice back, which leaves the tree and thus the control as
    // they were.
    if (DNode* dnode = view.find(path); dnode && dnode->combo)
        dnode->combo->show_value(view.app->selected(path));
}

void make_combo(ViewState& view, const RenderNode& node, DNode& dnode) {
    auto* combo = new ComboWidget;
    combo->setObjectName(qt_text(node.name));
    apply_combo_style(combo, node.style, node.items, node.selected);
    combo->on_select = [&view, path = node.path.get()](const std::string& value) {
        select(view, path, value);
    };
    apply_fixed_size(combo, node.style);
    dnode.combo = combo;
    dnode.box = combo;
    dnode.widget = combo;
}

void add_caption(DNode& dnode, const RenderNode& node) {
    dnode.label = make_label(node, CAPTION_PX);
    dnode.label->setAttribute(Qt::WA_TransparentForMouseEvents);
    dnode.layout->addWidget(dnode.label, 0, alignment_of(dnode.is_row, dnode.align));
    ++dnode.leading_items;
}

void make_box(ViewState& view, const RenderNode& node, DNode& dnode) {
    dnode.box = new VBoxWidget;
    dnode.widget = dnode.box;
    dnode.box->set_style(node.style);
    apply_fixed_size(dnode.box, node.style);
    apply_box_intent(*dnode.box, node.style->intent);
    build_box_layout(view, dnode, node);
}

void make_button(ViewState& view, const RenderNode& node, DNode& dnode) {
    make_box(view, node, dnode);
    dnode.box->on_click = window_action(dnode.box, node.style->intent);
    if (!dnode.box->on_click)
        dnode.box->on_click = [&view, path = node.path.get()] { view.click(path); };
    dnode.box->setCursor(Qt::PointingHandCursor);
    if (!node.text->empty())
        add_caption(dnode, node);
}

void make_check_box(ViewState& view, const RenderNode& node, DNode& dnode) {
    make_button(view, node, dnode);
    dnode.box->checkable = true;
    dnode.box->checked = view.app->is_checked(node.path);
}

using Maker = void (*)(ViewState&, const RenderNode&, DNode&);

/// In the order of `NodeKind`. A Link, a Host and a Scanner have no widget of their own here.
constexpr std::array<Maker, 14> MAKERS = {
    make_box,      make_text, make_button,    make_icon, make_editor, make_image, make_video,
    make_markdown, make_qr,   make_check_box, make_box,  make_box,    make_box,   make_combo,
};
static_assert(MAKERS.size() == static_cast<std::size_t>(NodeKind::ComboBox) + 1);

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
    ++view.nodes_made;
    dnode.kind = node.kind;
    dnode.parent = parent;
    dnode.grow = style.layout_grow;
    const auto kind = static_cast<std::size_t>(node.kind);
    MAKERS[kind < MAKERS.size() ? kind : 0](view, node, dnode);
    dnode.widget->setObjectName(qt_text(node.name));
    wrap_widget(view, dnode, style);
    note_fixed_height(dnode);
    dnode.collapsed = style.collapsed;
    if (dnode.collapsed)
        set_collapsed_limits(dnode);
    dnode.own_opacity = style.opacity;
    propagate_opacity(view, dnode);
    if (dnode.editor || dnode.combo || dnode.markdown)
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
            view.later.push_back(
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
