#pragma once

#include "svg/affine.h"
#include "svg/easing.h"
#include "svg/rising_keys.h"
#include "svg/selector_index.h"
#include "svg/svg_path.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace Corvel::Svg {

enum class TrackKind : std::int32_t {
    Rotate = 0,
    Translate = 1,
    Scale = 2,
    Matrix = 3,
    MotionPath = 4,
    Opacity = 5,
    Attribute = 6,
};

/// What changes over a track: a list of numbers for each key time.
struct TrackKeys {
    RisingKeys times;              ///< key positions from 0 to 1
    std::vector<double> numbers;   ///< all value lists, one behind the other
    std::vector<std::size_t> ends; ///< the end of each value list in `numbers`
    std::vector<Easing> easings;   ///< one for each interval; may be shorter

    std::size_t size() const { return ends.size(); }
    std::span<const double> value(std::size_t index) const {
        const std::size_t begin = index == 0 ? 0 : ends[index - 1];
        return std::span(numbers).subspan(begin, ends[index] - begin);
    }
    /// Ends the value list that was being appended to `numbers`.
    void end_value() {
        has_empty_value = has_empty_value || numbers.size() == (ends.empty() ? 0 : ends.back());
        ends.push_back(numbers.size());
    }

    bool has_empty_value = false; ///< some value list holds no number
};

/// The polyline of a motion path.
struct MotionPath {
    std::vector<Point> points;
    RisingKeys lengths; ///< running length at each point; the first is 0
};

/// One animated property of some elements, from SMIL or CSS alike. Keys and paths are shared
/// between the tracks that come from one keyframes block, however many elements it moves.
struct AnimationTrack {
    ElementSet elements;
    TrackKind kind = TrackKind::Rotate;
    std::shared_ptr<const TrackKeys> keys;
    double duration = 1000; ///< milliseconds
    bool repeat = true;
    bool additive = false; ///< the element's own transform, `base`, stays in effect
    bool active = true;    ///< false for a constant track
    Affine base;
    std::string attribute;                  ///< for the kind Attribute
    std::shared_ptr<const MotionPath> path; ///< for the kind MotionPath
};

} // namespace Corvel::Svg
