#include "runtime/node_slot.h"

#include "runtime/corvel_app.h"

#include <memory>
#include <utility>

namespace Corvel {

SlotArray::SlotArray(std::pmr::memory_resource& pool, std::size_t count)
    : pool_(&pool)
    , slots_(static_cast<NodeSlot*>(pool.allocate(count * sizeof(NodeSlot), alignof(NodeSlot))))
    , count_(count) {
    std::uninitialized_default_construct_n(slots_, count);
}

SlotArray& SlotArray::operator=(SlotArray&& other) noexcept {
    std::swap(pool_, other.pool_);
    std::swap(slots_, other.slots_);
    std::swap(count_, other.count_);
    return *this;
}

SlotArray::~SlotArray() {
    if (!pool_)
        return;
    std::destroy_n(slots_, count_);
    pool_->deallocate(slots_, count_ * sizeof(NodeSlot), alignof(NodeSlot));
}

void SlotIndex::add(NodeSlot& slot) {
    auto [entry, inserted] = slots_.try_emplace(*slot.path, &slot);
    if (inserted)
        return;
    NodeSlot* first = entry->second;
    slot.previous_of_path = first;
    slot.next_of_path = first->next_of_path;
    if (slot.next_of_path)
        slot.next_of_path->previous_of_path = &slot;
    first->next_of_path = &slot;
}

void SlotIndex::remove(NodeSlot& slot) {
    remove_one(slot);
    for (NodeSlot& child : slot.children)
        remove(child);
    if (!slot.details)
        return;
    if (slot.details->rows) {
        for (RowSlot& row : slot.details->rows->rows) {
            remove(*row.item);
            if (row.separator)
                remove(*row.separator);
        }
    }
    if (slot.details->cards) {
        for (CardSlot& card : slot.details->cards->cards)
            remove(*card.card);
    }
}

NodeSlot* SlotIndex::find(std::string_view path) const {
    auto entry = slots_.find(path);
    return entry == slots_.end() ? nullptr : entry->second;
}

void SlotIndex::remove_one(NodeSlot& slot) {
    NodeSlot* next = std::exchange(slot.next_of_path, nullptr);
    NodeSlot* previous = std::exchange(slot.previous_of_path, nullptr);
    if (next)
        next->previous_of_path = previous;
    if (previous) {
        previous->next_of_path = next;
        return;
    }
    // The key's text belongs to the slot that goes.
    slots_.erase(*slot.path);
    if (next)
        slots_.emplace(*next->path, next);
}

} // namespace Corvel
