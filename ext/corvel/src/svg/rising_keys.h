#pragma once

#include <cstddef>
#include <vector>

namespace Corvel::Svg {

/// Numbers that rise from key to key, as they are written: where somebody wrote a smaller one
/// behind a larger one, or none that compares, the search below still has one answer.
class RisingKeys {
public:
    void push_back(double key);
    void clear();

    std::size_t size() const { return keys_.size(); }
    double operator[](std::size_t index) const { return keys_[index]; }
    double front() const { return keys_.front(); }
    double back() const { return keys_.back(); }

    /// The interval that holds `position`: going up from the first, the last one before a key that
    /// the position does not lie above. There must be two keys.
    std::size_t interval_of(double position) const;

private:
    std::vector<double> keys_;
    std::vector<double> highest_; ///< of the keys from the second on; empty while they rise
    bool rises_ = true;
};

} // namespace Corvel::Svg
