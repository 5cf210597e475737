#pragma once

#include "runtime/render_node.h"

#include <QPointer>

#include <string>

class QBoxLayout;
class QGraphicsOpacityEffect;
class QScrollArea;
class QVariantAnimation;
class QVBoxLayout;
class QWidget;

namespace Corvel {

class ComboWidget;
class EditorWidget;
class IconWidget;
class MarkdownWidget;
class MediaWidget;
class QrWidget;
class VBoxWidget;
class WrapLabel;

/// How a box lays out its children, as far as the layout itself does not know it.
struct Arrangement {
    bool is_row = false;
    std::string align;
    std::string justify;
    bool fill = false; ///< some child grows
    int trailing_stretch = 0;
    int leading_items = 0;     ///< layout items before the first child
    int floating_children = 0; ///< children that left the layout as bars or sides
    bool scrolls = false;
    QScrollArea* scroll_area = nullptr;
    int inset = 0;           ///< thickness of the border
    int inset_bottom = 0;    ///< border and padding at the bottom
    int reserved_bottom = 0; ///< kept free below the children for a pinned bar
};

/// A node's height, when its style fixes or folds it.
struct Fold {
    int fixed_height = 0; ///< pixels that the style fixes, 0 if it leaves the height free
    bool collapsed = false;
    QVariantAnimation* animation = nullptr; ///< owned by the node's widget
};

enum class OverlayKind {
    None, ///< in its parent's layout
    Bar,  ///< on its host's bottom edge (a sheet)
    Side  ///< on its host's right edge, above a scrim (a drawer)
};

/// What a node that floats above its host's children is about.
struct Overlay {
    OverlayKind kind = OverlayKind::None;
    std::string host_path; ///< of the node whose box holds this one
    double position = 0;   ///< 0 shown, 1 hidden
    bool sliding = false;
    double target = 0;                        ///< position that the slide ends at
    QPointer<QVariantAnimation> slide;        ///< the one under way
    bool no_reserve = false;                  ///< bars: the host keeps no room for it
    QGraphicsOpacityEffect* effect = nullptr; ///< bars: on the node's `outer`
    VBoxWidget* scrim = nullptr;              ///< sides
    QGraphicsOpacityEffect* scrim_effect = nullptr;
    double max_width = 0; ///< sides

    bool is_bar() const { return kind == OverlayKind::Bar; }
    bool is_side() const { return kind == OverlayKind::Side; }
    bool floats() const { return kind != OverlayKind::None; }
};

/// The view's record of one node, a retained node: it lives as long as its path is shown.
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

    double grow = 0; ///< share of the room left over in the parent's layout
    double own_opacity = 1.0;
    double effective_opacity = 1.0; ///< the product with all ancestors'
    Arrangement arrangement;
    Fold fold;
    Overlay overlay;

    DNode* parent = nullptr;           ///< null for the root and for a node without a known parent
    const std::string* path = nullptr; ///< the key of this record
};

/// Whether `node` lies below `ancestor` in the tree.
bool is_below(const DNode& node, const DNode& ancestor);

} // namespace Corvel
