#pragma once

#include <vector>

namespace Corvel {

struct DNode;
struct RenderNode;
struct ViewState;

/// Modal nodes met while a subtree was made, each with the record of its parent. They refer to the
/// subtree's nodes.
struct ModalNode {
    const RenderNode* node;
    DNode* parent;
};
using ModalNodes = std::vector<ModalNode>;

/// Makes the widgets of one node, without its children and not yet in any layout, and records
/// them under the node's path, in place of an older record.
DNode& create_widget(ViewState& view, const RenderNode& node, DNode* parent);

/// The same with all descendants, except that modal ones are put in `modals`.
DNode& create_subtree(ViewState& view, const RenderNode& node, DNode* parent, ModalNodes& modals);

/// Opens the windows of nodes that `create_subtree` left out.
void create_modals(ViewState& view, const ModalNodes& modals);

} // namespace Corvel
