#pragma once

#include "desktop/widgets/sizing.h"

#include <algorithm>
#include <string_view>

namespace Corvel {

/// How a box runs.
struct BoxDirection {
    bool row = false;
    bool reverse = false;

    friend bool operator==(const BoxDirection&, const BoxDirection&) = default;
};

/// "Row" or "Column", possibly with "-Reverse"; anything else is a column.
inline BoxDirection box_direction(std::string_view text) {
    return {text.starts_with("Row"), text.size() >= 8 && text.ends_with("-Reverse")};
}

/// The stretches before and behind the children of a box.
struct Stretches {
    int leading = 0;
    int trailing = 0;

    friend bool operator==(const Stretches&, const Stretches&) = default;
};

/// `fill`: some child takes the free room. Without that, and without a `justify` that says
/// otherwise, the children are centred.
inline Stretches stretches_of(bool fill, bool scrolls, std::string_view justify) {
    if (fill)
        return {0, 0};
    if (scrolls || justify == "Start")
        return {0, 1};
    if (justify == "End")
        return {1, 0};
    return {1, 1};
}

/// A child's stretch: its share to grow, but none for a child of limited width in a row.
inline int stretch_of(double grow, bool row, bool width_limited) {
    constexpr int LIMIT = 1000000;
    return row && width_limited ? 0 : std::clamp(whole_pixels(grow), 0, LIMIT);
}

/// The place in a layout of `count` items for the child at `index`, behind the leading items, less
/// those children that float, and before the trailing stretch.
inline int layout_index(long long index, int leading, int floating, int count) {
    const long long place = leading + index - (index > 0 ? floating : 0);
    const long long last = std::max(leading, count - 1);
    return static_cast<int>(std::clamp<long long>(place, leading, last));
}

/// A rectangle in pixels, relative to the host.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const Area&, const Area&) = default;
};

/// A bar of the given height on the bottom edge of its host, inside the border `inset`; at
/// `position` 1 it lies wholly beyond the edge.
inline Area bar_area(int host_width, int host_height, int inset, int height, double position) {
    return {inset, host_height - inset - height + whole_pixels(height * position),
            host_width - 2 * inset, height};
}

/// What a bar takes away from the room of the host's children.
inline int bar_reserve(int height, double position) {
    return whole_pixels((1 - position) * height);
}

/// A panel on the right edge of its host, at most `max_width` wide (0: as wide as the host); at
/// `position` 1 it lies wholly beyond the edge.
inline Area side_area(int host_width, int host_height, int inset, double max_width,
                      double position) {
    const int available = std::max(host_width - 2 * inset, 0);
    const int width = max_width > 0 ? std::min(whole_pixels(max_width), available) : available;
    const int x = whole_pixels(width * position) - width + available + inset;
    return {x, inset, width, std::max(host_height - 2 * inset, 0)};
}

/// The room of the host inside its border, which the scrim of a side panel covers.
inline Area scrim_area(int host_width, int host_height, int inset) {
    return {inset, inset, std::max(host_width - 2 * inset, 0),
            std::max(host_height - 2 * inset, 0)};
}

/// The child of limited width in a container: as wide as allowed, centred.
inline Area centred_area(int width, int height, int max_width) {
    const int used = std::min(width, max_width);
    return {(width - used) / 2, 0, used, height};
}

} // namespace Corvel
