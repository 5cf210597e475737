#pragma once

#include "runtime/app_state.h"

namespace Corvel {

/// An interface nested deeper than this is cut off: each node's path repeats those above it, so
/// that memory grows with the square of the depth, and views recurse.
constexpr int max_render_depth = 1000;

/// Builds one render tree from the style tree and the state maps. Each node's slot in the cache
/// is brought up to date where its inputs have changed, then the tree is written from the slots.
class RenderBuilder {
public:
    explicit RenderBuilder(CorvelApp& app);

    /// Writes the tree over `tree`, whatever that held; the memory of an earlier tree is used
    /// again. Collects what clicks mean in the new tree.
    void build(RenderNode& tree);
    /// Whether no two siblings of the tree built share a name.
    bool names_distinct() const { return names_distinct_; }

private:
    /// What a node gets from its place in the tree.
    struct Scope {
        const StateSet* states;
        RowContext row;
        const Theme* card = nullptr; ///< theme of the surrounding theme card
        /// Text colour of the outermost theme card around; null outside any.
        const std::string* card_foreground = nullptr;
        int depth = 0;
    };

    // Life of the cache (render_builder.cpp)
    bool prepare_cache();
    std::unique_ptr<NodeSlot> make_slot(SharedText name, SharedText path, LayerPlan& plan);
    std::unique_ptr<NodeSlot> make_child(const NodeSlot& parent, SharedText name, LayerPlan& plan);
    void release(std::unique_ptr<NodeSlot>& slot);

    // One node (node_content.cpp)
    void refresh(NodeSlot& slot, const Scope& scope);
    void compute(NodeSlot& slot, const Scope& scope);
    void find_overrides(NodeSlot& slot);
    const LayerStyle& style_of(NodeSlot& slot, const Scope& scope);
    void apply_card_look(const NodeSlot& slot, const Scope& scope, SharedStyle& style) const;
    void set_mode(NodeSlot& slot, const LayerStyle& layer_style);

    // The tree (render_builder.cpp, row_nodes.cpp, card_nodes.cpp). A null `node` means that the
    // node is left out of the tree, with its subtree, and only brought up to date.
    void write_node(NodeSlot& slot, const Scope& scope, RenderNode* node);
    void write_children(NodeSlot& slot, const Scope& scope, RenderNode* node);
    void write_rows(NodeSlot& slot, const Scope& scope, RenderNode* node);
    void match_rows(NodeSlot& slot, RowSlots& list, LayerPlan& item, LayerPlan* separator);
    void write_cards(NodeSlot& slot, const Scope& scope, RenderNode* node);
    void match_cards(NodeSlot& slot, CardSlots& list, LayerPlan& card);

    // What clicks mean (click_targets.cpp)
    void collect_targets(const RenderNode& tree);
    void collect_slot_targets(const NodeSlot& slot, const RowContext& row);
    void collect_check_boxes(const RenderNode& node);

    CorvelApp& app_;
    CorvelApp::State& state_;
    RenderCache& cache_;
    const Theme* active_; ///< theme in force; null if there is none
    bool names_distinct_ = true;
};

/// Fills a node's list of children from the front, over what it held before.
class ChildWriter {
public:
    /// Null: there is nothing to write.
    explicit ChildWriter(RenderNode* parent)
        : children_(parent ? &parent->children : nullptr) {}
    void reserve(std::size_t count) {
        if (children_)
            children_->reserve(count);
    }
    /// The next child to write over, null if there is nothing to write. Valid until the next call.
    RenderNode* next() {
        if (!children_)
            return nullptr;
        if (count_ == children_->size())
            children_->emplace_back();
        return &(*children_)[count_++];
    }
    /// Drops what is left of the earlier list.
    void finish() {
        if (children_ && count_ < children_->size())
            children_->resize(count_);
    }

private:
    std::vector<RenderNode>* children_;
    std::size_t count_ = 0;
};

} // namespace Corvel
