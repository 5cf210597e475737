#include "runtime/child_slots.h"

#include "layers/load_limits.h"

#include <map>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace Corvel {
namespace {

bool same_ids(const std::vector<ListEntry>& a, const std::vector<ListEntry>& b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i].id != b[i].id)
            return false;
    }
    return true;
}

std::string separator_name(const ListEntry& row) {
    return row.id + ":sep";
}

bool all_names_distinct(const std::vector<ListEntry>& rows, bool separated) {
    std::unordered_set<std::string> names;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!names.insert(rows[i].id).second)
            return false;
        if (separated && i + 1 < rows.size() && !names.insert(separator_name(rows[i])).second)
            return false;
    }
    return true;
}

/// The rows of an earlier list by id, those of one id given out in their order.
class EarlierRows {
public:
    EarlierRows(const std::vector<ListEntry>& entries, std::vector<RowSlot>& slots)
        : entries_(entries)
        , slots_(slots)
        , next_(slots.size(), none) {
        for (std::size_t i = slots.size(); i-- > 0;) {
            auto [place, inserted] = first_.try_emplace(entries[i].id, i);
            if (!inserted)
                next_[i] = std::exchange(place->second, i);
        }
    }

    /// The earlier row for `entry`, with a new version if the fields differ; empty if there is
    /// none left.
    RowSlot take(const ListEntry& entry, std::uint64_t& last_version) {
        auto place = first_.find(entry.id);
        if (place == first_.end() || place->second == none)
            return {};
        const std::size_t i = std::exchange(place->second, next_[place->second]);
        if (entries_[i].fields != entry.fields)
            slots_[i].version = ++last_version;
        return std::move(slots_[i]);
    }

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    const std::vector<ListEntry>& entries_;
    std::vector<RowSlot>& slots_;
    std::unordered_map<std::string_view, std::size_t> first_;
    std::vector<std::size_t> next_; ///< the next row of the same id
};

} // namespace

/// Brings the list of child slots up to the layers, rows or themes that there are now.
void RenderBuilder::prepare_children(NodeSlot& slot, const Scope& scope) {
    if (scope.depth >= MAX_RENDER_DEPTH)
        return;
    if (slot.mode == ChildMode::Layers) {
        if (!slot.expanded)
            expand(slot);
    } else if (!slot.plan->children().empty()) {
        if (slot.mode == ChildMode::Rows)
            match_rows(slot);
        else if (scope.card_depth < MAX_CARD_DEPTH)
            match_cards(slot);
        else
            Layers::tell_limit(slot.plan->layer(),
                               "Left out theme cards; lists of themes lie too deep in each other.");
    }
    names_distinct_ = names_distinct_ && slot.distinct_children;
}

void RenderBuilder::expand(NodeSlot& slot) {
    auto& plans = slot.plan->children();
    if (!plans.empty())
        slot.children = SlotArray(cache_.slot_pool, plans.size());
    for (std::size_t i = 0; i < plans.size(); ++i) {
        NodeSlot& child = slot.children[i];
        set_up_child(child, slot, plans[i].name(), plans[i]);
        child.hideable = true;
        child.hidden = state_.hidden_paths.contains(*child.path);
    }
    slot.expanded = true;
    slot.distinct_children = slot.plan->distinct_children();
    slot.children_written = false;
}

/// A row is known again by its id and stays as it is while its fields are the same.
void RenderBuilder::match_rows(NodeSlot& slot) {
    RowSlots& list = *slot.details->rows;
    if (list.shown.same(*list.source))
        return;
    const SharedRows earlier = std::exchange(list.shown, *list.source);
    const std::vector<ListEntry>& entries = *list.shown;
    if (same_ids(*earlier, entries)) {
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if ((*earlier)[i].fields != entries[i].fields)
                list.rows[i].version = ++cache_.last_row_version;
        }
        return;
    }

    auto& templates = slot.plan->children();
    const bool separated = templates.size() > 1;
    EarlierRows earlier_rows(*earlier, list.rows);
    std::vector<RowSlot> rows;
    rows.reserve(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        RowSlot row = earlier_rows.take(entries[i], cache_.last_row_version);
        if (!row.item) {
            row.item = make_child(slot, entries[i].id, templates[0]);
            row.item->keeps_place = true;
            row.version = ++cache_.last_row_version;
        }
        if (separated && !row.separator && i + 1 < entries.size())
            row.separator = make_child(slot, separator_name(entries[i]), templates[1]);
        rows.push_back(std::move(row));
    }
    for (RowSlot& gone : list.rows) {
        release(gone.item);
        release(gone.separator);
    }
    list.rows = std::move(rows);
    slot.distinct_children = all_names_distinct(entries, separated);
    slot.children_written = false;
    cache_.targets_stale = true;
}

/// A card is known again by its theme's display name.
void RenderBuilder::match_cards(NodeSlot& slot) {
    CardSlots& list = *slot.details->cards;
    if (list.epoch == cache_.inputs.epoch)
        return;
    list.epoch = cache_.inputs.epoch;

    std::map<std::string, std::unique_ptr<NodeSlot>> earlier;
    for (CardSlot& entry : list.cards)
        earlier[*entry.card->name] = std::move(entry.card);
    const std::size_t earlier_count = list.cards.size();
    list.cards.clear();
    for (const auto& [display_name, theme] : state_.themes) {
        std::unique_ptr<NodeSlot>& card = earlier[display_name];
        if (!card) {
            card = make_child(slot, display_name, slot.plan->children()[0]);
            card->is_card = true;
            card->keeps_place = true;
            slot.children_written = false;
        }
        list.cards.push_back({std::move(card), &theme});
    }
    if (list.cards.size() != earlier_count)
        slot.children_written = false;
    for (auto& [display_name, gone] : earlier)
        release(gone);
}

} // namespace Corvel
