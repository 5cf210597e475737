#pragma once

#include <cstdint>
#include <string_view>
#include <vector>
#include <xxhash.h>

namespace Lumenfold::Builder {

/// Numbers terms from 0 in the order in which they are first met. A flat hash table: search meets
/// millions of words, and nodes of the standard's maps would be most of its time.
class TermIds {
public:
    static constexpr std::uint32_t NONE = 0xffffffff;

    /// The number of a term; `keep(term)` gives the bytes that a new one is known by from then on.
    template <typename Keep>
    std::uint32_t id(std::string_view term, const Keep& keep) {
        if (terms_.size() * 2 >= slots_.size())
            grow();
        const auto hash = static_cast<std::uint32_t>(XXH3_64bits(term.data(), term.size()));
        std::uint32_t& slot = find(hash, term);
        if (slot == NONE) {
            slot = static_cast<std::uint32_t>(terms_.size());
            terms_.push_back(keep(term));
            hashes_.push_back(hash);
        }
        return slot;
    }

    const std::vector<std::string_view>& terms() const { return terms_; }

private:
    std::uint32_t& find(std::uint32_t hash, std::string_view term) {
        const std::size_t mask = slots_.size() - 1;
        std::size_t at = hash & mask;
        while (slots_[at] != NONE && (hashes_[slots_[at]] != hash || terms_[slots_[at]] != term))
            at = (at + 1) & mask;
        return slots_[at];
    }

    void grow() {
        slots_.assign(slots_.empty() ? 1024 : slots_.size() * 2, NONE);
        const std::size_t mask = slots_.size() - 1;
        for (std::uint32_t id = 0; id < hashes_.size(); ++id) {
            std::size_t at = hashes_[id] & mask;
            while (slots_[at] != NONE)
                at = (at + 1) & mask;
            slots_[at] = id;
        }
    }

    std::vector<std::uint32_t> slots_; ///< a power of two, at most half of them taken
    std::vector<std::string_view> terms_;
    std::vector<std::uint32_t> hashes_;
};

} // namespace Lumenfold::Builder
