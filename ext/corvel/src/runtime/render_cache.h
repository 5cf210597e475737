#pragma once

#include "runtime/layer_plan.h"
#include "runtime/node_slot.h"
#include "runtime/state_sets.h"

#include <cstdint>
#include <memory>
#include <memory_resource>
#include <string_view>

namespace Corvel {

/// What renders leave behind for the next one. All of it can be dropped at any time between
/// renders; the next one then builds it anew and gives the same tree.
struct RenderCache {
    StateSets sets;
    std::unique_ptr<LayerPlan> root_plan;
    std::pmr::unsynchronized_pool_resource slot_pool; ///< outlives the slots
    std::unique_ptr<NodeSlot> root;
    SlotIndex index;
    StyleInputs inputs;
    /// Of the style tree that the plans describe. A change behind it drops them.
    std::uint64_t style_revision = 0;
    std::uint64_t last_row_version = 0;
    /// What clicks mean must be collected again: nodes came, went or changed their meaning.
    bool targets_stale = true;

    /// The entries of `path` in the state maps have come or gone or changed.
    void touch(std::string_view path) {
        for (NodeSlot* slot = index.find(path); slot; slot = slot->next_of_path)
            slot->touched = true;
    }
    void set_hidden(std::string_view path, bool hidden) {
        for (NodeSlot* slot = index.find(path); slot; slot = slot->next_of_path) {
            slot->hidden = hidden && slot->hideable;
            targets_stale = true;
        }
    }
    /// Values behind the styles have changed, the structure of the style tree has not.
    void restyle() { ++inputs.epoch; }
    void drop() {
        index.clear();
        root.reset();
        root_plan.reset();
        sets.clear();
        targets_stale = true;
    }
};

} // namespace Corvel
