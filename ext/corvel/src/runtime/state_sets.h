#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Corvel {

/// A set of active state names. Sets are interned by `StateSets`: equal sets are one object, so
/// that they compare by address.
class StateSet {
public:
    /// Sorted by bytes, without duplicates.
    const std::vector<std::string>& names() const { return names_; }

private:
    friend class StateSets;
    std::vector<std::string> names_;
    mutable std::map<std::string, const StateSet*, std::less<>> with_; ///< sets with one name more
};

/// The pool of all state sets met so far. Sets live until `clear`.
class StateSets {
public:
    StateSets();
    const StateSet* empty() const { return empty_; }
    /// The set that holds `state` besides all of `set`.
    const StateSet* with(const StateSet* set, std::string_view state);
    template <class Names>
    const StateSet* with_all(const StateSet* set, const Names& names) {
        for (const std::string& name : names)
            set = with(set, name);
        return set;
    }
    std::size_t size() const { return sets_.size(); }
    void clear();

private:
    const StateSet* intern(std::vector<std::string> names);

    std::map<std::vector<std::string>, std::unique_ptr<StateSet>> sets_;
    const StateSet* empty_ = nullptr;
};

} // namespace Corvel
