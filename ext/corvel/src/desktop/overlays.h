#pragma once

#include <string>
#include <vector>

class QWidget;

namespace Corvel {

struct DNode;
struct NodeStyle;
struct RenderNode;
struct ViewState;

/// Whether the overlay value of a style makes a top-level window.
bool is_modal(const RenderNode& node);

/// Makes bars and sides of those nodes of a new subtree that ask for it.
void float_overlays(ViewState& view, const RenderNode& node);
/// Brings a live node's place, in the layout or floating, up to its style.
void update_overlay(ViewState& view, DNode& dnode, const NodeStyle& style);
/// Undoes what a floating node did to its host, before the node goes.
void leave_host(ViewState& view, DNode& dnode);

/// Puts every bar and side that is not sliding in its place. Costs nothing while none floats.
void position_overlays(ViewState& view);
bool any_overlay_animating(ViewState& view);

/// Opens a node and its subtree as a window of its own over a scrim, at once or, while the root is
/// not shown, as soon as it is. `parent` may be null.
void create_modal(ViewState& view, const RenderNode& node, DNode* parent);
/// Closes the window of a node, if it has one.
void close_modal(ViewState& view, const std::string& path);
/// Opens those that waited for the root to be shown.
void open_waiting_modals(ViewState& view);
/// Fits the scrims to the root.
/// Gives each dialog's window the title that the dialog shows, for those who do not see it.
void name_modals(ViewState& view);

void resize_scrims(ViewState& view);

} // namespace Corvel
