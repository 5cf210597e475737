#pragma once

#include "runtime/app_state.h"
#include "runtime/render_diff.h"

namespace Corvel {

/// An interface nested deeper than this is cut off: each node's path repeats those above it, so
/// that memory grows with the square of the depth, and views recurse.
constexpr int MAX_RENDER_DEPTH = 1000;
/// Lists of theme cards that lie in each other: each multiplies the nodes by the number of themes.
constexpr int MAX_CARD_DEPTH = 2;

/// Builds the render tree from the style tree and the state maps. Every node's slot in the cache
/// is looked at and brought up to date where its inputs have changed. What clicks mean is
/// collected anew along the way.
///
/// There are two ways to get at the tree: written from nothing, or as an update of the tree that
/// the application keeps, in which only nodes that have changed are written. Both give the same
/// tree.
class RenderBuilder {
public:
    explicit RenderBuilder(CorvelApp& app);

    /// The tree of the present state.
    RenderNode build();
    /// Makes `state.previous_tree` the tree of the present state. Returns what has changed in it,
    /// as `diff_nodes` gives it; an Add of the whole if there was none.
    std::vector<RenderPatch> update();

private:
    /// What a node gets from its place in the tree.
    struct Scope {
        const StateSet* states = nullptr;
        RowContext row;
        const Theme* card = nullptr; ///< theme of the surrounding theme card
        int card_depth = 0;          ///< theme cards around, one in the other
        /// Text colour of the outermost theme card around; null outside any.
        const std::string* card_foreground = nullptr;
        int depth = 0;
    };

    // Life of the slots (slot_life.cpp)
    bool prepare_cache();
    void set_up(NodeSlot& slot, SharedText name, SharedText path, LayerPlan& plan);
    void set_up_child(NodeSlot& slot, const NodeSlot& parent, SharedText name, LayerPlan& plan);
    std::unique_ptr<NodeSlot> make_child(const NodeSlot& parent, SharedText name, LayerPlan& plan);
    void release(NodeSlot& slot);
    void release(std::unique_ptr<NodeSlot>& slot);
    void release_children(NodeSlot& slot);

    // One node's content (node_content.cpp)
    void refresh(NodeSlot& slot, const Scope& scope);
    void compute(NodeSlot& slot, const Scope& scope);
    void find_overrides(NodeSlot& slot);
    const LayerStyle& style_of(NodeSlot& slot, const Scope& scope);
    void apply_card_look(const NodeSlot& slot, const Scope& scope, SharedStyle& style) const;
    void set_mode(NodeSlot& slot, const LayerStyle& layer_style);

    // A node's children (child_slots.cpp)
    void prepare_children(NodeSlot& slot, const Scope& scope);
    void expand(NodeSlot& slot);
    void match_rows(NodeSlot& slot);
    void match_cards(NodeSlot& slot);
    /// Calls `visit(child, scope)` for each child slot, in order and with the scope that it has
    /// below `slot`.
    template <class Visit>
    void for_each_child(NodeSlot& slot, const Scope& scope, Visit visit);
    template <class Visit>
    void for_each_row(NodeSlot& slot, Scope& inner, Visit visit);
    template <class Visit>
    void for_each_card(NodeSlot& slot, const Scope& scope, Scope& inner, Visit visit);

    // The tree (render_builder.cpp). A null `node` means that the node is left out of the tree,
    // with all below it, and only its slots are brought up to date.
    void write_tree(RenderNode& tree);
    void write_node(NodeSlot& slot, const Scope& scope, RenderNode* node);
    void write_children(NodeSlot& slot, const Scope& scope, RenderNode* node);
    void update_node(NodeSlot& slot, const Scope& scope, RenderNode& node);
    void update_content(NodeSlot& slot, RenderNode& node);
    void update_children(NodeSlot& slot, const Scope& scope, RenderNode& node);
    void exchange_children(NodeSlot& slot, const Scope& scope, RenderNode& node);
    void rewrite_children(NodeSlot& slot, const Scope& scope, RenderNode& node);
    Scope root_scope();
    SiblingNames known_names() const;

    // What clicks mean (click_targets.cpp)
    void collect_targets(const RenderNode& tree);
    void collect_slot_targets(const NodeSlot& slot, const RowContext& row);
    void collect_check_boxes(const RenderNode& node);

    CorvelApp& app_;
    CorvelApp::State& state_;
    RenderCache& cache_;
    const Theme* active_;        ///< theme in force; null if there is none
    bool keeping_ = false;       ///< the tree written is the one that the application keeps
    bool names_distinct_ = true; ///< no two siblings met share a name
    std::vector<RenderPatch> patches_;
};

} // namespace Corvel
