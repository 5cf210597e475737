#pragma once

namespace Corvel {

struct DNode;
struct ViewState;

/// Folds a node's height away, or gives it back, over 150 ms. If nothing changes, makes sure that
/// the height limits are those of the state, after other steps may have touched them.
void apply_collapsed(ViewState& view, DNode& dnode, bool value);

/// Remembers the height that the style just fixed, as what an expanded node returns to.
void note_fixed_height(DNode& dnode);

/// Gives a new widget the height limits of its collapsed state.
void set_collapsed_limits(DNode& dnode);

} // namespace Corvel
