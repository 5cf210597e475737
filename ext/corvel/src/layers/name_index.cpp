#include "layers/name_index.h"

namespace Layers {
namespace {

constexpr std::size_t SCANNED_AT_MOST = 16;
} // namespace

void NameIndex::add(std::uint32_t key) {
    const auto position = static_cast<std::uint32_t>(keys_.size());
    keys_.push_back(key);
    if (keys_.size() <= SCANNED_AT_MOST)
        return;
    if (keys_.size() * 2 > slots_.size())
        rehash(slots_.empty() ? SCANNED_AT_MOST * 8 : slots_.size() * 4);
    else
        insert(position);
}

void NameIndex::clear() {
    keys_.clear();
    slots_.clear();
}

void NameIndex::insert(std::uint32_t position) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = keys_[position] & mask;
    while (slots_[slot] != 0)
        slot = (slot + 1) & mask;
    slots_[slot] = position + 1;
}

// In order of position, so that of equal keys the first is found first.
void NameIndex::rehash(std::size_t slot_count) {
    slots_.assign(slot_count, 0);
    for (std::uint32_t position = 0; position < keys_.size(); ++position)
        insert(position);
}

} // namespace Layers
