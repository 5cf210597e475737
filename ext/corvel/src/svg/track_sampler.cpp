#include "svg/track_sampler.h"

#include "svg/svg_values.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Corvel::Svg {
namespace {

/// How far `position` is from key `index` to the next one, as a fraction.
double fraction_of(const RisingKeys& keys, std::size_t index, double position) {
    const double span = keys[index + 1] - keys[index];
    return span > 0 ? (position - keys[index]) / span : 0;
}

Sample whole_value(const TrackKeys& keys, std::size_t index) {
    const std::span<const double> value = keys.value(index);
    Sample result;
    result.size = std::min(value.size(), result.numbers.size());
    std::copy_n(value.begin(), result.size, result.numbers.begin());
    return result;
}

Affine transform_of(const AnimationTrack& track, const Sample& value) {
    switch (track.kind) {
    case TrackKind::Translate:
        return translation(value.at(0, 0), value.at(1, 0));
    case TrackKind::Scale: {
        const double x = value.at(0, 1);
        return scaling(x, value.at(1, x));
    }
    default:
        return value.size >= 3 ? rotation(value.numbers[0], value.numbers[1], value.numbers[2])
                               : rotation(value.at(0, 0), 0, 0);
    }
}

} // namespace

double local_time(const AnimationTrack& track, double ms) {
    if (track.duration <= 0)
        return 1;
    if (track.repeat)
        return std::fmod(ms, track.duration) / track.duration;
    return std::min(ms / track.duration, 1.0);
}

Sample sample(const TrackKeys& keys, double t) {
    if (keys.size() == 0)
        return {};
    if (t <= keys.times.front())
        return whole_value(keys, 0);
    if (t >= keys.times.back() || keys.size() == 1)
        return whole_value(keys, keys.size() - 1);
    const std::size_t index = keys.times.interval_of(t);
    double u = fraction_of(keys.times, index, t);
    if (index < keys.easings.size())
        u = solve_easing(keys.easings[index], u);
    const Sample from = whole_value(keys, index);
    const Sample to = whole_value(keys, index + 1);
    Sample result;
    result.size = std::min(from.size, to.size);
    for (std::size_t i = 0; i < result.size; ++i)
        result.numbers[i] = from.numbers[i] + (to.numbers[i] - from.numbers[i]) * u;
    return result;
}

Point path_point(const MotionPath& path, double distance) {
    if (path.points.empty())
        return {};
    const double total = path.lengths.back();
    if (path.points.size() == 1 || total <= 0)
        return path.points.front();
    const double target = total * std::clamp(distance, 0.0, 1.0);
    const std::size_t index = path.lengths.interval_of(target);
    const double u = fraction_of(path.lengths, index, target);
    const Point from = path.points[index];
    const Point to = path.points[index + 1];
    return {from.x + (to.x - from.x) * u, from.y + (to.y - from.y) * u};
}

bool append_track_value(std::string& out, const AnimationTrack& track, double ms) {
    const Sample value = sample(*track.keys, track.active ? local_time(track, ms) : 0);
    switch (track.kind) {
    case TrackKind::Opacity:
    case TrackKind::Attribute:
        if (value.size > 0)
            append_number(out, value.numbers[0]);
        return value.size > 0;
    case TrackKind::Matrix: {
        const auto& n = value.numbers;
        if (value.size == n.size())
            append_matrix(out, {n[0], n[1], n[2], n[3], n[4], n[5]});
        return value.size == n.size();
    }
    case TrackKind::MotionPath: {
        const Point point = path_point(*track.path, value.at(0, 0));
        append_matrix(out, translation(point.x, point.y));
        return true;
    }
    default: {
        const Affine transform = transform_of(track, value);
        append_matrix(out, track.additive ? track.base * transform : transform);
        return true;
    }
    }
}

bool always_has_value(const AnimationTrack& track) {
    if (track.kind != TrackKind::Opacity && track.kind != TrackKind::Attribute)
        return true; // the only makers of Matrix tracks write six numbers
    return !track.keys->has_empty_value;
}

} // namespace Corvel::Svg
