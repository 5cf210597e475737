#include "runtime/render_builder.h"

namespace Corvel {
namespace {

/// With so many different sets of states met, the cache starts anew: the application makes up
/// names of states as it goes.
constexpr std::size_t MAX_STATE_SETS = 4096;

} // namespace

/// Brings what all slots have in common up to date. False without a root layer.
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
    if (cache_.style_revision != revision || cache_.sets.size() > MAX_STATE_SETS)
        cache_.drop();
    cache_.style_revision = revision;
    if (!cache_.root) {
        const Layers::LLayer* layer = state_.engine.find_layer(state_.root_name);
        if (!layer)
            return false;
        cache_.restyle();
        cache_.root_plan = std::make_unique<LayerPlan>(*layer);
        cache_.root = std::make_unique<NodeSlot>();
        set_up(*cache_.root, cache_.root_plan->name(), state_.root_name, *cache_.root_plan);
    }
    return true;
}

void RenderBuilder::set_up(NodeSlot& slot, SharedText name, SharedText path, LayerPlan& plan) {
    slot.name = std::move(name);
    slot.path = std::move(path);
    slot.plan = &plan;
    slot.kind = plan.kind();
    cache_.index.add(slot);
    cache_.targets_stale = true;
}

void RenderBuilder::set_up_child(NodeSlot& slot, const NodeSlot& parent, SharedText name,
                                 LayerPlan& plan) {
    std::string path;
    path.reserve(parent.path->size() + 1 + name->size());
    path.append(*parent.path).append(1, '/').append(*name);
    set_up(slot, std::move(name), std::move(path), plan);
}

std::unique_ptr<NodeSlot> RenderBuilder::make_child(const NodeSlot& parent, SharedText name,
                                                    LayerPlan& plan) {
    auto slot = std::make_unique<NodeSlot>();
    set_up_child(*slot, parent, std::move(name), plan);
    return slot;
}

void RenderBuilder::release(NodeSlot& slot) {
    cache_.index.remove(slot);
    cache_.targets_stale = true;
}

void RenderBuilder::release(std::unique_ptr<NodeSlot>& slot) {
    if (slot)
        release(*slot);
    slot.reset();
}

void RenderBuilder::release_children(NodeSlot& slot) {
    for (NodeSlot& child : slot.children)
        release(child);
    slot.children = SlotArray();
    slot.expanded = false;
    slot.distinct_children = true;
    if (!slot.details)
        return;
    if (slot.details->rows) {
        for (RowSlot& row : slot.details->rows->rows) {
            release(row.item);
            release(row.separator);
        }
        slot.details->rows.reset();
    }
    if (slot.details->cards) {
        for (CardSlot& card : slot.details->cards->cards)
            release(card.card);
        slot.details->cards.reset();
    }
}

} // namespace Corvel
