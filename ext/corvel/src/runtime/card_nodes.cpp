#include "runtime/render_builder.h"

#include <map>
#include <string>

namespace Corvel {

/// Brings the cards up to the themes known now. A card is known again by its theme's name.
void RenderBuilder::match_cards(NodeSlot& slot, CardSlots& list, LayerPlan& card) {
    if (list.epoch == cache_.inputs.epoch)
        return;
    list.epoch = cache_.inputs.epoch;

    std::map<std::string, std::unique_ptr<NodeSlot>> earlier;
    for (CardSlot& entry : list.cards)
        earlier[*entry.card->name] = std::move(entry.card);
    list.cards.clear();
    for (const auto& [display_name, theme] : state_.themes) {
        std::unique_ptr<NodeSlot>& known = earlier[display_name];
        if (!known) {
            known = make_child(slot, display_name, card);
            known->is_card = true;
        }
        list.cards.push_back({std::move(known), &theme});
    }
    for (auto& [display_name, gone] : earlier)
        release(gone);
}

void RenderBuilder::write_cards(NodeSlot& slot, const Scope& scope, RenderNode* node) {
    ChildWriter writer(node);
    CardSlots& list = *slot.details->cards;
    const auto& templates = slot.plan->children();
    if (templates.empty() || scope.depth >= max_render_depth) {
        writer.finish();
        return;
    }
    match_cards(slot, list, *templates[0]);

    Scope inner = scope;
    inner.states = slot.states;
    inner.row = {};
    ++inner.depth;
    for (CardSlot& card : list.cards) {
        inner.card = card.theme;
        inner.card_foreground =
            scope.card_foreground ? scope.card_foreground : &theme_value(*card.theme, "Foreground");
        refresh(*card.card, inner);
        write_node(*card.card, inner, writer.next());
    }
    writer.finish();
}

} // namespace Corvel
