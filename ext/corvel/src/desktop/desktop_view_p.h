#pragma once

#include "runtime/render_node.h"

#include <QPointer>
#include <QString>

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

class QBoxLayout;
class QGraphicsOpacityEffect;
class QLayout;
class QScrollArea;
class QScrollBar;
class QVariantAnimation;
class QVBoxLayout;
class QWidget;

namespace Corvel {

class ComboWidget;
class CorvelApp;
class EditorWidget;
class IconWidget;
class MarkdownWidget;
class MediaWidget;
class QrWidget;
class RootContainer;
class VBoxWidget;
class VideoWidget;
class WrapLabel;

/// The view's record of one node.
///
/// `outer` is always the top of the chain `widget` inside margin wrapper inside
/// `MaxWidthContainer`, and the parent's `layout` holds `outer`, unless the node floats or is a
/// modal window.
struct DNode {
    NodeKind kind = NodeKind::Box;
    QWidget* widget = nullptr; ///< the widget proper
    QWidget* outer = nullptr;  ///< what stands in the parent's layout
    QVBoxLayout* margin_layout = nullptr;
    QBoxLayout* layout = nullptr; ///< of the children; null for leaves

    // Those that exist are set. An editor and a combo are boxes as well, and the caption of a box
    // is its label.
    VBoxWidget* box = nullptr;
    WrapLabel* label = nullptr;
    IconWidget* icon = nullptr;
    EditorWidget* editor = nullptr;
    ComboWidget* combo = nullptr;
    MediaWidget* media = nullptr;
    MarkdownWidget* markdown = nullptr;
    QrWidget* qr = nullptr;

    int leading_items = 0;     ///< layout items before the first child
    int floating_children = 0; ///< children that left the layout as bars or sides
    int trailing_stretch = 0;
    double grow = 0;
    bool fill = false; ///< some child grows
    bool is_row = false;
    std::string align;
    std::string justify;
    bool scrolls = false;
    QScrollArea* scroll_area = nullptr;
    int inset = 0;           ///< thickness of the border
    int inset_bottom = 0;    ///< border and padding at the bottom
    int reserved_bottom = 0; ///< kept free below the children for a pinned bar

    int fixed_height = 0; ///< pixels that the style fixes, 0 if it leaves the height free
    bool collapsed = false;
    QVariantAnimation* collapse_animation = nullptr; ///< owned by `widget`

    double own_opacity = 1.0;
    double effective_opacity = 1.0; ///< the product with all ancestors'

    std::string host_path; ///< of the node whose box holds this bar or side
    bool bar_floating = false;
    bool bar_no_reserve = false;
    bool bar_modal_sheet = false;
    double bar_position = 0; ///< 0 shown, 1 hidden
    QGraphicsOpacityEffect* bar_effect = nullptr;
    bool side_floating = false;
    VBoxWidget* side_scrim = nullptr;
    QGraphicsOpacityEffect* side_scrim_effect = nullptr;
    double side_position = 0; ///< 0 shown, 1 hidden
    double side_max_width = 0;
    bool overlay_animating = false;
    double overlay_target = 0;                     ///< position that the slide ends at
    QPointer<QVariantAnimation> overlay_animation; ///< the slide under way

    DNode* parent = nullptr;           ///< null for the root and for a node without a known parent
    const std::string* path = nullptr; ///< the key of this record
};

/// Ordered by the bytes of the path: the descendants of a path lie in the run that starts at
/// path + "/". A row's id may hold slashes, so the run can also hold nodes of other rows.
using NodeMap = std::map<std::string, DNode>;

/// A top-level window and the scrim under it.
struct ModalWindow {
    QPointer<QWidget> window;
    QPointer<QWidget> scrim;
};

/// What the parts of the view share.
struct ViewState {
    explicit ViewState(CorvelApp& application)
        : app(&application) {}

    CorvelApp* app;
    QPointer<RootContainer> root;
    bool render_pending = false;
    std::vector<VideoWidget*> videos; ///< in order of creation
    bool video_check_pending = false;
    QVBoxLayout* root_layout = nullptr;
    NodeMap nodes;
    std::map<std::string, ModalWindow> modals;
    std::map<QScrollBar*, int> scroll_values; ///< last value seen of each vertical bar

    bool applying = false;                               ///< patches are being applied
    std::vector<RenderPatch> queued;                     ///< came in meanwhile
    std::vector<RenderPatch> later;                      ///< put off, see `put_off`
    std::size_t nodes_made = 0;                          ///< by the batch under way
    bool catching_up = false;                            ///< `later` is made without a pause
    std::set<std::string> floating;                      ///< paths of the bars and sides
    bool positioning = false;                            ///< overlays are being placed
    std::vector<std::string> waiting_modals;             ///< open once the root is shown
    std::unordered_map<const QWidget*, DNode*> by_outer; ///< record by its `outer`
    bool tab_order_stale = false;                        ///< fields came or moved
    std::unordered_set<EditorWidget*> editors;           ///< alive and not about to go
    std::vector<QPointer<QLayout>> paused_layouts;       ///< laid out once, after the patches
    std::unordered_set<QScrollBar*> themed_bars;         ///< every bar of a scrolling box
    std::map<QScrollArea*, std::string> strips;          ///< path of the active child last shown
    std::string bar_color;                               ///< the theme's colour in their sheets

    DNode* find(const std::string& path);
    /// The record whose `outer` is `widget`, null if there is none.
    DNode* find_dnode_by_widget(const QWidget* widget) const;

    /// Renders and applies, or asks for a render later while patches are being applied or overlays
    /// placed.
    void render_now();
    void schedule_render();
    void apply(const std::vector<RenderPatch>& patches);
    /// Whether the child at `index` of its parent is to be made after the next paint: the batch has
    /// made many nodes already, and a long list shows its beginning first. What is put off goes to
    /// `later`, in order, and comes by itself or before the next patches.
    bool put_off(std::size_t index) const;
    void schedule_later();
    /// Runs the application's handlers for an event. False if the window is gone afterwards, and
    /// this record possibly with it.
    bool dispatch(const std::string& path, const std::string& event);
    /// A press on a node: the event, then a render on the same stack.
    void click(const std::string& path);
};

/// Whether `node` lies below `ancestor` in the tree.
bool is_below(const DNode& node, const DNode& ancestor);

/// Calls `visit` with each record below `top`, parents before children.
template <class Visit>
void for_each_below(NodeMap& nodes, const DNode& top, Visit visit) {
    const std::string prefix = *top.path + "/";
    for (auto at = nodes.lower_bound(prefix);
         at != nodes.end() && at->first.compare(0, prefix.size(), prefix) == 0; ++at)
        if (is_below(at->second, top))
            visit(at->second);
}

inline QString qt_text(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace Corvel
