#include "runtime/render_builder.h"

namespace Corvel {
namespace {

/// The action behind "list:" in a Button's intent: on the row around it, otherwise on the list
/// that the intent names behind a colon.
std::optional<RowTarget> row_target(const std::string& intent, const RowContext& row) {
    const std::string action = intent.substr(std::string_view("list:").size());
    if (row.list_key && !row.list_key->empty())
        return RowTarget{*row.list_key, *row.item_id, action};
    const std::size_t colon = action.find(':');
    if (colon == std::string::npos)
        return std::nullopt;
    return RowTarget{action.substr(colon + 1), {}, action.substr(0, colon)};
}

} // namespace

void RenderBuilder::collect_targets(const RenderNode& tree) {
    state_.theme_card_targets.clear();
    state_.row_targets.clear();
    collect_slot_targets(*cache_.root, {});
    state_.checkbox_paths.clear();
    collect_check_boxes(tree);
    cache_.targets_stale = false;
}

void RenderBuilder::collect_slot_targets(const NodeSlot& slot, const RowContext& row) {
    if (slot.has_row_target) {
        if (std::optional<RowTarget> target = row_target(slot.style->intent, row))
            state_.row_targets.insert_or_assign(*slot.path, *std::move(target));
    }
    if (slot.mode == ChildMode::Layers) {
        for (const NodeSlot& child : slot.children) {
            if (!child.hidden)
                collect_slot_targets(child, row);
        }
    } else if (slot.mode == ChildMode::Rows) {
        const RowSlots& list = *slot.details->rows;
        for (std::size_t i = 0; i < list.rows.size(); ++i) {
            const ListEntry& entry = (*list.shown)[i];
            const RowSlot& shown = list.rows[i];
            collect_slot_targets(*shown.item,
                                 {&entry.fields, &list.binds->list_key, &entry.id, shown.version});
            if (shown.separator && i + 1 < list.rows.size())
                collect_slot_targets(*shown.separator, {});
        }
    } else {
        for (const CardSlot& card : slot.details->cards->cards) {
            collect_slot_targets(*card.card, {});
            state_.theme_card_targets.insert_or_assign(*card.card->path, *card.card->name);
        }
    }
}

void RenderBuilder::collect_check_boxes(const RenderNode& node) {
    if (node.kind == NodeKind::CheckBox)
        state_.checkbox_paths.insert(*node.path);
    for (const RenderNode& child : node.children)
        collect_check_boxes(child);
}

} // namespace Corvel
