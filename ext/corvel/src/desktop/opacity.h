#pragma once

namespace Corvel {

struct DNode;
struct ViewState;

/// Works a node's opacity out anew from its own and its parent's and, if it changed, gives it to
/// the node's widgets and to all descendants.
void propagate_opacity(ViewState& view, DNode& dnode);

} // namespace Corvel
