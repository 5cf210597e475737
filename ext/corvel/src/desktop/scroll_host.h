#pragma once

class QWidget;

namespace Corvel {

struct DNode;
struct NodeStyle;
struct ViewState;

/// The room at the right that a scrolling box keeps for its bar, in pixels: taken from its padding,
/// so that nothing moves when the bar appears. 0 for a box whose padding has no room for it.
int bar_room(const NodeStyle& style);

/// Puts a scroll area in a box and returns the widget that its children go in.
QWidget* make_scroll_host(ViewState& view, DNode& dnode, const NodeStyle& style);
/// Takes the scroll area away; its content must have been emptied.
void drop_scroll_host(ViewState& view, DNode& dnode);

/// Brings the scroll bars up to the theme in force.
void theme_scroll_bars(ViewState& view);

} // namespace Corvel
