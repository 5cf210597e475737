#pragma once

#include <string_view>

namespace Corvel::Svg {

/// A cubic Bezier timing curve from (0, 0) to (1, 1); one that is not valid is linear.
struct Easing {
    double x1 = 0;
    double y1 = 0;
    double x2 = 1;
    double y2 = 1;
    bool valid = false;
};

/// Reads "cubic-bezier(x1, y1, x2, y2)"; any other timing is linear.
Easing parse_easing(std::string_view text);

/// The eased progress at `x`, both from 0 to 1; the curve's parameter is found to within 2^-32.
double solve_easing(const Easing& easing, double x);

} // namespace Corvel::Svg
