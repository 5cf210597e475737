#include "runtime/render_builder.h"

#include "runtime/child_slots.h"

#include <utility>

namespace Corvel {
namespace {

const SharedText no_text;
const SharedItems no_items;

const SharedItems& items_of(const NodeSlot& slot) {
    const SharedItems* items = slot.details ? slot.details->overrides.items : nullptr;
    return items ? *items : no_items;
}

const SharedText& selected_of(const NodeSlot& slot) {
    const SharedText* selected = slot.details ? slot.details->overrides.selected : nullptr;
    return selected ? *selected : no_text;
}

/// Writes all but the place of the node and its children.
void write_content(const NodeSlot& slot, RenderNode& node) {
    node.text = slot.text;
    node.style = slot.style;
    node.items = items_of(slot);
    node.selected = selected_of(slot);
}

/// How many children the node has at most.
std::size_t child_count(const NodeSlot& slot) {
    if (slot.mode == ChildMode::Layers)
        return slot.children.size();
    if (slot.mode == ChildMode::Rows)
        return 2 * slot.details->rows->rows.size();
    return slot.details->cards->cards.size();
}

} // namespace

RenderBuilder::RenderBuilder(CorvelApp& app)
    : app_(app)
    , state_(*app.state_)
    , cache_(state_.cache)
    , active_(state_.theme_in_force()) {}

RenderNode RenderBuilder::build() {
    RenderNode tree;
    if (prepare_cache()) {
        state_.uses_viewport_height = false;
        write_tree(tree);
        if (cache_.targets_stale)
            collect_targets(tree);
    }
    return tree;
}

std::vector<RenderPatch> RenderBuilder::update() {
    keeping_ = true;
    std::optional<RenderNode>& tree = state_.previous_tree;
    const bool has_root = prepare_cache();
    if (has_root)
        state_.uses_viewport_height = false;

    if (tree && has_root && cache_.root->in_tree) {
        refresh(*cache_.root, root_scope());
        update_node(*cache_.root, root_scope(), *tree);
    } else {
        RenderNode fresh;
        if (has_root)
            write_tree(fresh);
        if (tree)
            diff_nodes(*tree, fresh, known_names(), patches_);
        else
            patches_.push_back({PatchKind::Add, fresh.path, {}, 0, fresh});
        tree = std::move(fresh);
    }
    state_.previous_names_distinct = names_distinct_;
    if (has_root && cache_.targets_stale)
        collect_targets(*tree);
    return std::move(patches_);
}

RenderBuilder::Scope RenderBuilder::root_scope() {
    Scope scope;
    scope.states = cache_.sets.with_all(cache_.sets.empty(), state_.global_states);
    return scope;
}

SiblingNames RenderBuilder::known_names() const {
    return state_.previous_names_distinct ? SiblingNames::Distinct : SiblingNames::MayRepeat;
}

void RenderBuilder::write_tree(RenderNode& tree) {
    refresh(*cache_.root, root_scope());
    write_node(*cache_.root, root_scope(), &tree);
    if (keeping_)
        cache_.root->in_tree = true;
}

void RenderBuilder::write_node(NodeSlot& slot, const Scope& scope, RenderNode* node) {
    if (node) {
        node->kind = slot.kind;
        node->name = slot.name;
        node->path = slot.path;
        write_content(slot, *node);
        state_.uses_viewport_height |= slot.viewport_dependent;
        if (keeping_)
            slot.written = true;
    }
    write_children(slot, scope, node);
}

void RenderBuilder::write_children(NodeSlot& slot, const Scope& scope, RenderNode* node) {
    prepare_children(slot, scope);
    if (node)
        node->children.reserve(child_count(slot));
    for_each_child(slot, scope, [&](NodeSlot& child, const Scope& inner) {
        if (!child.hidden) {
            refresh(child, inner);
            const bool writes = node && child.shown();
            write_node(child, inner, writes ? &node->children.emplace_back() : nullptr);
        }
        if (node && keeping_)
            child.in_tree = child.shown();
    });
    if (node && keeping_)
        slot.children_written = true;
}

/// Brings a node of the kept tree up to its slot, whose content is up to date.
void RenderBuilder::update_node(NodeSlot& slot, const Scope& scope, RenderNode& node) {
    state_.uses_viewport_height |= slot.viewport_dependent;
    if (!slot.written)
        update_content(slot, node);
    update_children(slot, scope, node);
}

void RenderBuilder::update_content(NodeSlot& slot, RenderNode& node) {
    slot.written = true;
    const bool changed = node.text != slot.text || node.style != slot.style ||
                         node.items != items_of(slot) || node.selected != selected_of(slot);
    write_content(slot, node);
    if (changed)
        patches_.push_back(update_patch(node));
}

/// Goes down the tree and the slots side by side.
void RenderBuilder::update_children(NodeSlot& slot, const Scope& scope, RenderNode& node) {
    prepare_children(slot, scope);
    bool any = false;
    bool same_children = true;
    for_each_child(slot, scope, [&](NodeSlot& child, const Scope& inner) {
        any = true;
        if (!child.hidden)
            refresh(child, inner);
        same_children = same_children && child.in_tree == child.shown();
    });
    // With names that repeat, nodes are compared across their places.
    if (!slot.children_written || !slot.distinct_children) {
        rewrite_children(slot, scope, node);
    } else if (!same_children) {
        exchange_children(slot, scope, node);
    } else if (any) { // no look at the node otherwise: a leaf costs its slot only
        auto place = node.children.begin();
        for_each_child(slot, scope, [&](NodeSlot& child, const Scope& inner) {
            if (child.in_tree)
                update_node(child, inner, *place++);
            else if (!child.hidden)
                write_node(child, inner, nullptr);
        });
    }
}

/// Takes out the children that are not shown any more and puts in those that are shown now.
void RenderBuilder::exchange_children(NodeSlot& slot, const Scope& scope, RenderNode& node) {
    for_each_child(slot, scope, [&](NodeSlot& child, const Scope&) {
        if (child.in_tree && !child.shown())
            patches_.push_back(remove_patch(child.path));
    });
    std::vector<RenderNode> earlier = std::exchange(node.children, {});
    node.children.reserve(child_count(slot));
    auto place = earlier.begin();
    for_each_child(slot, scope, [&](NodeSlot& child, const Scope& inner) {
        RenderNode* known = child.in_tree ? &*place++ : nullptr;
        child.in_tree = child.shown();
        if (!child.in_tree) {
            if (!child.hidden)
                write_node(child, inner, nullptr);
        } else if (known) {
            update_node(child, inner, node.children.emplace_back(std::move(*known)));
        } else {
            write_node(child, inner, &node.children.emplace_back());
            patches_.push_back(add_patch(node, node.children.size() - 1));
        }
    });
}

/// Writes all below a node from nothing and compares it with what was there.
void RenderBuilder::rewrite_children(NodeSlot& slot, const Scope& scope, RenderNode& node) {
    RenderNode fresh;
    fresh.path = node.path;
    write_children(slot, scope, &fresh);
    diff_children(node, fresh, known_names(), patches_);
    node.children = std::move(fresh.children);
}

RenderNode CorvelApp::build_render_tree() {
    return RenderBuilder(*this).build();
}

std::vector<RenderPatch> CorvelApp::render_patches() {
    std::vector<RenderPatch> patches = RenderBuilder(*this).update();
    for (auto& [path, text] : state_->pending_editor_texts) {
        RenderPatch patch;
        patch.kind = PatchKind::SetEditorText;
        patch.path = path;
        patch.node.text = std::move(text);
        patches.push_back(std::move(patch));
    }
    state_->pending_editor_texts.clear();
    return patches;
}

} // namespace Corvel
