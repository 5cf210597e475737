#pragma once

#include "runtime/render_builder.h"

namespace Corvel {

template <class Visit>
void RenderBuilder::for_each_child(NodeSlot& slot, const Scope& scope, Visit visit) {
    Scope inner = scope;
    inner.states = slot.states;
    ++inner.depth;
    if (slot.mode == ChildMode::Layers) {
        for (NodeSlot& child : slot.children)
            visit(child, inner);
    } else if (slot.mode == ChildMode::Rows) {
        for_each_row(slot, inner, visit);
    } else {
        for_each_card(slot, scope, inner, visit);
    }
}

/// The rows with the separators between them, of which only the rows have a row's context.
template <class Visit>
void RenderBuilder::for_each_row(NodeSlot& slot, Scope& inner, Visit visit) {
    RowSlots& list = *slot.details->rows;
    const std::vector<ListEntry>& entries = *list.shown;
    const std::size_t count = list.rows.size();
    inner.card = nullptr;
    for (std::size_t i = 0; i < count; ++i) {
        RowSlot& row = list.rows[i];
        inner.states = slot.states;
        if (i == 0)
            inner.states = cache_.sets.with(inner.states, "First");
        if (i + 1 == count)
            inner.states = cache_.sets.with(inner.states, "Last");
        inner.row = {&entries[i].fields, &list.binds->list_key, &entries[i].id, row.version};
        visit(*row.item, inner);
        if (row.separator && i + 1 < count) {
            inner.states = slot.states;
            inner.row = {};
            visit(*row.separator, inner);
        }
    }
}

template <class Visit>
void RenderBuilder::for_each_card(NodeSlot& slot, const Scope& scope, Scope& inner, Visit visit) {
    inner.row = {};
    ++inner.card_depth;
    for (CardSlot& card : slot.details->cards->cards) {
        inner.card = card.theme;
        inner.card_foreground =
            scope.card_foreground ? scope.card_foreground : &theme_value(*card.theme, "Foreground");
        visit(*card.card, inner);
    }
}

} // namespace Corvel
