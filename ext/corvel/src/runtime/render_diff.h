#pragma once

#include "runtime/render_node.h"

#include <vector>

namespace Corvel {

/// Whether the names within each list of siblings are known to differ.
enum class SiblingNames { Distinct, MayRepeat };

/// Appends to `patches` what brings a view of `before` to `after`. Siblings are matched by name;
/// of two equal names in `before` the later one counts. Survivors that only changed their places
/// get no patch. `names` describes `before`: distinct names spare the look-up where the positions
/// agree.
void diff_nodes(const RenderNode& before, const RenderNode& after, SiblingNames names,
                std::vector<RenderPatch>& patches);

/// The part of `diff_nodes` for what is below two nodes of one kind.
void diff_children(const RenderNode& before, const RenderNode& after, SiblingNames names,
                   std::vector<RenderPatch>& patches);

/// The patch that brings a node of the same path up to `node`.
RenderPatch update_patch(const RenderNode& node);
/// The patch that makes the child at `index` of `parent`.
RenderPatch add_patch(const RenderNode& parent, std::size_t index);
RenderPatch remove_patch(const SharedText& path);

/// Whether both show the same, whatever their names, paths and children.
bool nodes_equal(const RenderNode& a, const RenderNode& b);

} // namespace Corvel
