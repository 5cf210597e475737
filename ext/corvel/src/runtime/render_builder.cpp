#include "runtime/render_builder.h"

namespace Corvel {
namespace {

/// With so many different sets of states met, the cache starts anew: the application makes up
/// names of states as it goes.
constexpr std::size_t max_state_sets = 4096;

/// Shares the record unless it is shared already, which spares its count a change.
template <class Handle>
void share(Handle& to, const Handle& from) {
    if (!to.same(from))
        to = from;
}

const SharedText no_text;
const SharedItems no_items;

} // namespace

RenderBuilder::RenderBuilder(CorvelApp& app)
    : app_(app)
    , state_(*app.state_)
    , cache_(state_.cache)
    , active_(state_.theme_in_force()) {}

void RenderBuilder::build(RenderNode& tree) {
    if (!prepare_cache()) {
        tree = RenderNode();
        return;
    }
    state_.uses_viewport_height = false;
    Scope scope;
    scope.states = cache_.sets.with_all(cache_.sets.empty(), state_.global_states);
    refresh(*cache_.root, scope);
    write_node(*cache_.root, scope, &tree);
    if (cache_.targets_stale)
        collect_targets(tree);
}

/// Brings the cache's common part up to date. False without a root layer.
bool RenderBuilder::prepare_cache() {
    StyleInputs& inputs = cache_.inputs;
    if (inputs.icon_scale != app_.mobile_icon_scale ||
        inputs.font_scale != app_.mobile_font_scale ||
        inputs.size_scale != app_.mobile_size_scale) {
        inputs.icon_scale = app_.mobile_icon_scale;
        inputs.font_scale = app_.mobile_font_scale;
        inputs.size_scale = app_.mobile_size_scale;
        cache_.restyle();
    }
    inputs.secondary_color = active_ ? &theme_value(*active_, "Secondary") : nullptr;

    const std::uint64_t revision = Layers::style_revision();
    if (cache_.style_revision != revision || cache_.sets.size() > max_state_sets)
        cache_.drop();
    cache_.style_revision = revision;
    if (!cache_.root) {
        const Layers::LLayer* layer = state_.engine.find_layer(state_.root_name);
        if (!layer)
            return false;
        cache_.restyle();
        cache_.root_plan = std::make_unique<LayerPlan>(*layer);
        cache_.root = make_slot(cache_.root_plan->name(), state_.root_name, *cache_.root_plan);
    }
    return true;
}

std::unique_ptr<NodeSlot> RenderBuilder::make_slot(SharedText name, SharedText path,
                                                   LayerPlan& plan) {
    auto slot = std::make_unique<NodeSlot>(std::move(name), std::move(path), plan);
    slot->hidden = state_.hidden_paths.contains(*slot->path);
    cache_.index.add(*slot);
    cache_.targets_stale = true;
    return slot;
}

std::unique_ptr<NodeSlot> RenderBuilder::make_child(const NodeSlot& parent, SharedText name,
                                                    LayerPlan& plan) {
    std::string path;
    path.reserve(parent.path->size() + 1 + name->size());
    path.append(*parent.path).append(1, '/').append(*name);
    return make_slot(std::move(name), std::move(path), plan);
}

void RenderBuilder::release(std::unique_ptr<NodeSlot>& slot) {
    if (!slot)
        return;
    cache_.index.remove(*slot);
    cache_.targets_stale = true;
    slot.reset();
}

void RenderBuilder::write_node(NodeSlot& slot, const Scope& scope, RenderNode* node) {
    if (node) {
        node->kind = slot.plan->kind();
        share(node->name, slot.name);
        share(node->path, slot.path);
        share(node->text, slot.text);
        share(node->style, slot.style);
        const bool combo = node->kind == NodeKind::ComboBox && slot.details;
        const Overrides* overrides = combo ? &slot.details->overrides : nullptr;
        share(node->items, overrides && overrides->items ? *overrides->items : no_items);
        share(node->selected, overrides && overrides->selected ? *overrides->selected : no_text);
        state_.uses_viewport_height |= slot.viewport_dependent;
    }
    if (slot.mode == ChildMode::Layers)
        write_children(slot, scope, node);
    else if (slot.mode == ChildMode::Rows)
        write_rows(slot, scope, node);
    else
        write_cards(slot, scope, node);
}

void RenderBuilder::write_children(NodeSlot& slot, const Scope& scope, RenderNode* node) {
    if (!slot.expanded) {
        slot.expanded = true;
        if (scope.depth < max_render_depth) {
            for (const auto& plan : slot.plan->children())
                slot.children.push_back(make_child(slot, plan->name(), *plan));
        }
    }
    names_distinct_ = names_distinct_ && slot.plan->distinct_children();

    Scope inner = scope;
    inner.states = slot.states;
    ++inner.depth;
    ChildWriter writer(node);
    writer.reserve(slot.children.size());
    for (auto& child : slot.children) {
        if (child->hidden)
            continue;
        refresh(*child, inner);
        write_node(*child, inner, child->visible ? writer.next() : nullptr);
    }
    writer.finish();
}

RenderNode CorvelApp::build_render_tree() {
    RenderNode tree;
    RenderBuilder(*this).build(tree);
    return tree;
}

} // namespace Corvel
