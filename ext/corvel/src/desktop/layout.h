#pragma once

#include <Qt>

#include <string>

class QBoxLayout;
class QLayout;
class QWidget;

namespace Corvel {

struct DNode;
struct NodeStyle;
struct RenderNode;
struct ViewState;

/// The place of a child across a box's direction; none lets it fill the width or height.
Qt::Alignment alignment_of(bool is_row, const std::string& align);

/// The alignment of a child in its parent: none for one of limited width.
Qt::Alignment child_alignment(const DNode& parent, bool width_limited);

/// Lays the children of a new box out on it, or on the content of a scroll area in it, and records
/// how in `dnode`. The trailing stretch is still missing.
void build_box_layout(ViewState& view, DNode& dnode, const RenderNode& node);
/// Closes the layout of a box whose children have been added.
void add_trailing_stretch(DNode& dnode);

/// Brings an existing box layout up to its style, and its children's items with it.
void update_box_layout(ViewState& view, DNode& dnode, const NodeStyle& style);

/// Sets the stretches before and behind the children anew, from whether one of them grows.
void rebalance_stretches(DNode& dnode);
/// Gives the node its share in its parent's layout, if it stands there.
void apply_stretch_in_parent(ViewState& view, DNode& dnode);

/// Puts a child behind the others of a box whose layout is being built.
void append_child(DNode& parent, const DNode& child, const NodeStyle& style);
/// Puts a child in its parent's layout; `index` counts the children, also those that float.
void insert_child(DNode& parent, const DNode& child, long long index, const NodeStyle& style);

/// Makes the margin and width wrappers that the style asks for around `dnode.widget`.
void wrap_widget(ViewState& view, DNode& dnode, const NodeStyle& style);
/// Brings the wrappers of a live node up to the style.
void update_wrappers(ViewState& view, DNode& dnode, const NodeStyle& style);

/// Keeps `pixels` free at the bottom of a host's children.
void reserve_bottom(DNode& host, int pixels);

} // namespace Corvel
