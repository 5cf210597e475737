#pragma once

#include "runtime/render_node.h"

namespace Corvel {

struct DNode;
struct ViewState;

/// What the view does with the nodes of one kind.
struct NodeOperations {
    NodeKind kind;
    /// Makes the widget and records it: `widget`, the members of its class, and for a box `layout`.
    void (*make)(ViewState& view, const RenderNode& node, DNode& dnode);
    /// Brings content and size of a live widget up to the node.
    void (*update)(ViewState& view, DNode& dnode, const RenderNode& node);
};

/// Those of a box for a value that is no kind.
const NodeOperations& operations_of(NodeKind kind);

} // namespace Corvel
