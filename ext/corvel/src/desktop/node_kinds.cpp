#include "desktop/node_kinds.h"

#include "desktop/desktop_view_p.h"
#include "desktop/layout.h"
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

namespace Corvel {

namespace {

constexpr int TEXT_PX = 28;
constexpr int CAPTION_PX = 18;

void update_label(const DNode& dnode, const RenderNode& node) {
    dnode.label->setText(qt_text(node.text));
    dnode.label->set_color(node.style->text_color);
}

void make_text(ViewState&, const RenderNode& node, DNode& dnode) {
    dnode.label = make_label(node, TEXT_PX);
    dnode.label->setWordWrap(node.style->wrap);
    apply_fixed_size(dnode.label, node.style);
    dnode.widget = dnode.label;
}

void update_text(ViewState&, DNode& dnode, const RenderNode& node) {
    update_label(dnode, node);
    apply_fixed_size(dnode.widget, node.style);
}

void make_icon(ViewState&, const RenderNode& node, DNode& dnode) {
    dnode.icon = new IconWidget(node.style->source);
    dnode.icon->set_color(node.style->text_color);
    dnode.icon->set_fit(node.style->fit);
    dnode.icon->set_rotation(node.style->rotation);
    apply_icon_size(dnode.icon, node.style);
    dnode.widget = dnode.icon;
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

void make_editor(ViewState& view, const RenderNode& node, DNode& dnode) {
    auto* editor = new EditorWidget;
    editor->setObjectName(qt_text(node.name));
    // Until the patches are through, a change of focus is none of the user's doing.
    editor->muted = view.queue.applying;
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

void update_editor(ViewState&, DNode& dnode, const RenderNode& node) {
    apply_editor_style(dnode.editor, node.style, node.style->placeholder, node.text, false);
    apply_fixed_size(dnode.widget, node.style);
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

void update_media(ViewState&, DNode& dnode, const RenderNode& node) {
    dnode.media->apply_style(node.style);
    dnode.media->set_source(node.style->effective_source);
    apply_media_size(dnode.media, node.style);
}

void make_markdown(ViewState&, const RenderNode& node, DNode& dnode) {
    dnode.markdown = new MarkdownWidget;
    apply_markdown_style(dnode.markdown, node.style);
    dnode.markdown->set_source_text(node.text);
    dnode.widget = dnode.markdown;
}

void update_markdown(ViewState&, DNode& dnode, const RenderNode& node) {
    apply_markdown_style(dnode.markdown, node.style);
    dnode.markdown->set_source_text(node.text);
}

void make_qr(ViewState&, const RenderNode& node, DNode& dnode) {
    dnode.qr = new QrWidget;
    dnode.qr->set_style(node.style);
    dnode.qr->set_data(node.style->data);
    apply_fixed_size(dnode.qr, node.style);
    dnode.widget = dnode.qr;
}

void update_qr(ViewState&, DNode& dnode, const RenderNode& node) {
    dnode.qr->set_style(node.style);
    dnode.qr->set_data(node.style->data);
    apply_fixed_size(dnode.widget, node.style);
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

void update_combo(ViewState&, DNode& dnode, const RenderNode& node) {
    apply_combo_style(dnode.combo, node.style, node.items, node.selected);
    apply_fixed_size(dnode.widget, node.style);
}

void add_caption(DNode& dnode, const RenderNode& node) {
    dnode.label = make_label(node, CAPTION_PX);
    dnode.label->setAttribute(Qt::WA_TransparentForMouseEvents);
    dnode.layout->addWidget(dnode.label, 0,
                            alignment_of(dnode.arrangement.is_row, dnode.arrangement.align));
    ++dnode.arrangement.leading_items;
}

void make_box(ViewState& view, const RenderNode& node, DNode& dnode) {
    dnode.box = new VBoxWidget;
    dnode.widget = dnode.box;
    dnode.box->set_style(node.style);
    apply_fixed_size(dnode.box, node.style);
    apply_box_intent(*dnode.box, node.style->intent);
    build_box_layout(view, dnode, node);
}

/// Tells assistive programs what the look of the box tells the eye.
void announce_standing(const ViewState& view, const DNode& dnode, const RenderNode& node) {
    const auto has = [&](const char* state) { return view.app->has_state(node.path, state); };
    dnode.box->set_standing(has("Active") || has("Selected"), has("Disabled"));
}

void make_button(ViewState& view, const RenderNode& node, DNode& dnode) {
    make_box(view, node, dnode);
    dnode.box->on_click = window_action(dnode.box, node.style->intent);
    if (!dnode.box->on_click)
        dnode.box->on_click = [&view, path = node.path.get()] { view.click(path); };
    dnode.box->set_pressable();
    dnode.box->tab = node.name->ends_with(" Tab");
    announce_standing(view, dnode, node);
    dnode.box->setCursor(Qt::PointingHandCursor);
    if (!node.text->empty())
        add_caption(dnode, node);
}

void make_check_box(ViewState& view, const RenderNode& node, DNode& dnode) {
    make_button(view, node, dnode);
    dnode.box->checkable = true;
    dnode.box->checked = view.app->is_checked(node.path);
}

void update_box(ViewState& view, DNode& dnode, const RenderNode& node) {
    if (dnode.label)
        update_label(dnode, node);
    if (dnode.kind == NodeKind::CheckBox)
        dnode.box->set_checked(view.app->is_checked(node.path));
    if (dnode.box->on_click)
        announce_standing(view, dnode, node);
    apply_fixed_size(dnode.widget, node.style);
}

/// In the order of `NodeKind`. A Link, a Host and a Scanner have no widget of their own here.
constexpr std::array<NodeOperations, 14> KINDS = {{
    {NodeKind::Box, make_box, update_box},
    {NodeKind::Text, make_text, update_text},
    {NodeKind::Button, make_button, update_box},
    {NodeKind::Icon, make_icon, update_icon},
    {NodeKind::Editor, make_editor, update_editor},
    {NodeKind::Image, make_image, update_media},
    {NodeKind::Video, make_video, update_media},
    {NodeKind::Markdown, make_markdown, update_markdown},
    {NodeKind::QR, make_qr, update_qr},
    {NodeKind::CheckBox, make_check_box, update_box},
    {NodeKind::Link, make_box, update_box},
    {NodeKind::Host, make_box, update_box},
    {NodeKind::Scanner, make_box, update_box},
    {NodeKind::ComboBox, make_combo, update_combo},
}};

constexpr bool in_order() {
    for (std::size_t i = 0; i < KINDS.size(); ++i)
        if (static_cast<std::size_t>(KINDS[i].kind) != i)
            return false;
    return KINDS.size() == static_cast<std::size_t>(NodeKind::ComboBox) + 1;
}
static_assert(in_order(), "one row for each kind, in the order of the enumeration");

} // namespace

const NodeOperations& operations_of(NodeKind kind) {
    const auto row = static_cast<std::size_t>(kind);
    return KINDS[row < KINDS.size() ? row : 0];
}

} // namespace Corvel
