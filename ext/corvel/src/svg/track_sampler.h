#pragma once

#include "svg/animation_track.h"

#include <array>
#include <cstddef>
#include <string>

namespace Corvel::Svg {

/// The numbers of a track at some time. No kind of track uses more than six.
struct Sample {
    std::array<double, 6> numbers{};
    std::size_t size = 0;

    /// The number at `index`, or `fallback` if the track has fewer.
    double at(std::size_t index, double fallback) const {
        return index < size ? numbers[index] : fallback;
    }
};

/// The progress of a track after `ms` milliseconds, from 0 to 1.
double local_time(const AnimationTrack& track, double ms);

/// The numbers at progress `t`, interpolated between the keys around it.
Sample sample(const TrackKeys& keys, double t);

/// The point of the polyline at `distance`, as a fraction of its length.
Point path_point(const MotionPath& path, double distance);

/// Appends the attribute value that the track gives after `ms` milliseconds; false, with nothing
/// appended, if its keys hold no number there.
bool append_track_value(std::string& out, const AnimationTrack& track, double ms);

/// Whether the track gives a value at any time.
bool always_has_value(const AnimationTrack& track);

} // namespace Corvel::Svg
