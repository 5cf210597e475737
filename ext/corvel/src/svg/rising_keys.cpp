#include "svg/rising_keys.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Corvel::Svg {

// The first key counts for nothing in the search. Behind a key that is no number, which no position
// lies above, nothing is found.
void RisingKeys::push_back(double key) {
    const bool stays_in_order = keys_.size() < 2 ? !std::isnan(key) : key >= keys_.back();
    if (rises_ && !stays_in_order) {
        rises_ = false;
        highest_ = keys_;
        if (!highest_.empty())
            highest_[0] = -std::numeric_limits<double>::infinity();
    }
    keys_.push_back(key);
    if (rises_)
        return;
    const double top = std::isnan(key) ? std::numeric_limits<double>::infinity() : key;
    if (highest_.empty())
        highest_.push_back(-std::numeric_limits<double>::infinity());
    else
        highest_.push_back(std::max(highest_.back(), top));
}

void RisingKeys::clear() {
    *this = {};
}

std::size_t RisingKeys::interval_of(double position) const {
    const std::vector<double>& searched = rises_ ? keys_ : highest_;
    const auto first = searched.begin() + 1;
    const auto found = std::partition_point(first, searched.end() - 1,
                                            [position](double key) { return position > key; });
    return static_cast<std::size_t>(found - first);
}

} // namespace Corvel::Svg
