#include "runtime/state_sets.h"

#include <algorithm>
#include <utility>

namespace Corvel {

StateSets::StateSets()
    : empty_(intern({})) {}

const StateSet* StateSets::with(const StateSet* set, std::string_view state) {
    auto known = set->with_.find(state);
    if (known != set->with_.end())
        return known->second;

    std::vector<std::string> names = set->names_;
    auto position = std::lower_bound(names.begin(), names.end(), state);
    if (position == names.end() || *position != state)
        names.emplace(position, state);
    const StateSet* longer = intern(std::move(names));
    set->with_.emplace(state, longer);
    return longer;
}

void StateSets::clear() {
    sets_.clear();
    empty_ = intern({});
}

const StateSet* StateSets::intern(std::vector<std::string> names) {
    std::unique_ptr<StateSet>& entry = sets_[names];
    if (!entry) {
        entry = std::make_unique<StateSet>();
        entry->names_ = std::move(names);
    }
    return entry.get();
}

} // namespace Corvel
