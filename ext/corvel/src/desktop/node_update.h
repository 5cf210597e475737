#pragma once

namespace Corvel {

struct RenderPatch;
struct ViewState;

/// Brings the widgets of a live node up to the patch's node. No widget is made anew.
void update_node(ViewState& view, const RenderPatch& patch);

/// Overwrites what an editor shows.
void set_editor_text(ViewState& view, const RenderPatch& patch);

} // namespace Corvel
