#pragma once

class QGraphicsOpacityEffect;

namespace Corvel {

struct DNode;
struct NodeStyle;
struct ViewState;

// Shared by the sources of the bars and of the sides.

/// The record of the node whose box holds a floating node, null once it is gone.
DNode* host_of(ViewState& view, const DNode& dnode);
/// Moves a node out of its parent's layout on top of the parent's box. False, with nothing done,
/// if the parent has no box or the node is a modal window.
bool float_node(ViewState& view, DNode& dnode);
/// Slides a floating node to `to`, in place of a slide under way.
void animate_overlay(ViewState& view, DNode& dnode, double from, double to);
void stop_overlay_animation(DNode& dnode);
/// Sets an effect's opacity. It is off while it has nothing to do: nested effects would get in
/// each other's way, and every repaint of a child would repaint the whole overlay.
void set_effect_opacity(QGraphicsOpacityEffect* effect, double opacity);

/// Floats a node as a bar on its parent's bottom edge, at `position`.
void float_bar(ViewState& view, DNode& dnode, double position);
void move_bar(ViewState& view, DNode& dnode, double position);
/// Shows a bar or hides it, as its position says: a hidden one takes no clicks.
void show_bar(DNode& dnode);
/// Puts a bar back in its parent's layout.
void settle_bar(ViewState& view, DNode& dnode, const NodeStyle& style);

/// Floats a node as a panel on its parent's right edge, at `position`, above a scrim.
void float_side(ViewState& view, DNode& dnode, double position, double max_width);
void move_side(ViewState& view, DNode& dnode, double position);
void show_side(DNode& dnode);

} // namespace Corvel
