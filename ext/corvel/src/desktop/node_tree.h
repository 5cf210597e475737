#pragma once

#include <string>

class QWidget;

namespace Corvel {

struct RenderPatch;
struct ViewState;

/// Makes a node with its subtree and puts it in its parent. Without a parent that can take it, it
/// stays apart and invisible.
void add_node(ViewState& view, const RenderPatch& patch);

/// Makes a node of another kind in place of the one with its path, first among its siblings.
void replace_node(ViewState& view, const RenderPatch& patch);

/// Destroys a node with its subtree. No application code runs from what goes.
void remove_node(ViewState& view, const std::string& path);

/// Forgets every node and silences what is left of them, before the window goes.
void forget_all_nodes(ViewState& view);

/// Lays out, once for all patches, what `add_node` filled.
void resume_layouts(ViewState& view);

} // namespace Corvel
