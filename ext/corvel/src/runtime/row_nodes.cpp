#include "runtime/render_builder.h"

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

/// Brings the slots of a list up to its present rows. A row is known again by its id and stays as
/// it is while its fields are the same.
void RenderBuilder::match_rows(NodeSlot& slot, RowSlots& list, LayerPlan& item,
                               LayerPlan* separator) {
    if (list.shown.same(*list.source))
        return;
    const SharedRows earlier = list.shown;
    list.shown = *list.source;
    if (same_ids(*earlier, *list.shown)) {
        for (std::size_t i = 0; i < list.rows.size(); ++i) {
            if ((*earlier)[i].fields != (*list.shown)[i].fields)
                list.rows[i].version = ++cache_.last_row_version;
        }
        return;
    }

    EarlierRows earlier_rows(*earlier, list.rows);
    std::vector<RowSlot> rows;
    rows.reserve(list.shown->size());
    for (const ListEntry& entry : *list.shown) {
        RowSlot row = earlier_rows.take(entry, cache_.last_row_version);
        if (!row.item) {
            row.item = make_child(slot, entry.id, item);
            row.version = ++cache_.last_row_version;
        }
        rows.push_back(std::move(row));
    }
    for (RowSlot& gone : list.rows) {
        release(gone.item);
        release(gone.separator);
    }
    list.rows = std::move(rows);
    list.distinct = all_names_distinct(*list.shown, separator != nullptr);
    cache_.targets_stale = true;
}

void RenderBuilder::write_rows(NodeSlot& slot, const Scope& scope, RenderNode* node) {
    ChildWriter writer(node);
    RowSlots& list = *slot.details->rows;
    const auto& templates = slot.plan->children();
    if (templates.empty() || scope.depth >= max_render_depth) {
        writer.finish();
        return;
    }
    LayerPlan* separator = templates.size() > 1 ? templates[1].get() : nullptr;
    match_rows(slot, list, *templates[0], separator);
    names_distinct_ = names_distinct_ && list.distinct;

    Scope inner = scope;
    inner.card = nullptr;
    ++inner.depth;
    const std::size_t count = list.rows.size();
    writer.reserve(separator ? 2 * count : count);
    for (std::size_t i = 0; i < count; ++i) {
        RowSlot& row = list.rows[i];
        const ListEntry& entry = (*list.shown)[i];
        inner.states = slot.states;
        if (i == 0)
            inner.states = cache_.sets.with(inner.states, "First");
        if (i + 1 == count)
            inner.states = cache_.sets.with(inner.states, "Last");
        inner.row = {&entry.fields, &list.binds->list_key, &entry.id, row.version};
        refresh(*row.item, inner);
        write_node(*row.item, inner, writer.next());

        if (!separator || i + 1 == count)
            continue;
        if (!row.separator)
            row.separator = make_child(slot, separator_name(entry), *separator);
        inner.states = slot.states;
        inner.row = {};
        refresh(*row.separator, inner);
        write_node(*row.separator, inner, row.separator->visible ? writer.next() : nullptr);
    }
    writer.finish();
}

} // namespace Corvel
