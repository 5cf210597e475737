#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Layers {

/// Finds the positions of a list by 32-bit keys. Few keys are scanned, many are hashed, so that a
/// small list costs no more than its keys.
class NameIndex {
public:
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    /// Appends the key of the next position.
    void add(std::uint32_t key);
    void clear();
    void reserve(std::size_t count) { keys_.reserve(count); }

    /// The first position with this key for which `matches(position)` is true, or `npos`.
    template <class Matches>
    std::size_t find(std::uint32_t key, Matches matches) const {
        if (slots_.empty()) {
            for (std::size_t position = 0; position < keys_.size(); ++position)
                if (keys_[position] == key && matches(position))
                    return position;
            return npos;
        }
        const std::size_t mask = slots_.size() - 1;
        for (std::size_t slot = key & mask; slots_[slot] != 0; slot = (slot + 1) & mask) {
            const std::size_t position = slots_[slot] - 1;
            if (keys_[position] == key && matches(position))
                return position;
        }
        return npos;
    }

private:
    void insert(std::uint32_t position);
    void rehash(std::size_t slot_count);

    std::vector<std::uint32_t> keys_;
    std::vector<std::uint32_t> slots_; ///< position + 1, 0 for free; a power of two, or empty
};

} // namespace Layers
