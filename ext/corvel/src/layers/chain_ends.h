#pragma once

#include <cstddef>
#include <unordered_map>

namespace Layers {

/// Finds the ends of chains of pointers that grow at their ends only, and remembers where long
/// ones led, so that building a chain of n nodes does not take n * n steps.
template <class Node>
class ChainEnds {
public:
    /// The last node from `start` on; `next_of` gives the node behind one, null at the end.
    template <class Next>
    const Node* end_of(const Node* start, Next next_of) {
        const Node* node = start;
        std::size_t steps = 0;
        while (const Node* next = next_of(*node)) {
            if (++steps > steps_on_foot)
                if (const auto known = led_to_.find(node); known != led_to_.end())
                    next = known->second;
            node = next;
        }
        if (steps > steps_on_foot)
            led_to_[start] = node;
        return node;
    }

    /// To be called when a chain was cut.
    void forget() { led_to_.clear(); }

private:
    static constexpr std::size_t steps_on_foot = 32;
    std::unordered_map<const Node*, const Node*> led_to_;
};

} // namespace Layers
