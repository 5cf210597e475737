#include "svg/easing.h"

#include "svg/svg_values.h"

#include <vector>

namespace Corvel::Svg {
namespace {

/// One coordinate of the curve: 3(1-s)^2 s p1 + 3(1-s) s^2 p2 + s^3.
struct Curve {
    Curve(double p1, double p2)
        : linear(3 * p1)
        , square(3 * p2 - 6 * p1)
        , cubic(3 * p1 - 3 * p2 + 1) {}
    double at(double s) const { return linear * s + s * s * (square + cubic * s); }

    double linear;
    double square;
    double cubic;
};

} // namespace

Easing parse_easing(std::string_view text) {
    const std::size_t open = text.find('(');
    if (!text.starts_with("cubic-bezier") || open == std::string_view::npos)
        return {};
    const std::vector<double> n = parse_numbers(text.substr(open));
    return n.size() == 4 ? Easing{n[0], n[1], n[2], n[3], true} : Easing{};
}

double solve_easing(const Easing& easing, double x) {
    if (!easing.valid)
        return x;
    // Bisection by a fixed number of halvings: the cost of a frame does not depend on the curve.
    // The middle of each interval is followed alone, so that nothing is left to branch prediction.
    constexpr int halvings = 32;
    const Curve curve(easing.x1, easing.x2);
    double middle = 0.5;
    double quarter = 0.25;
    for (int i = 1; i < halvings; ++i, quarter /= 2)
        middle += x > curve.at(middle) ? quarter : -quarter;
    return Curve(easing.y1, easing.y2).at(middle);
}

} // namespace Corvel::Svg
