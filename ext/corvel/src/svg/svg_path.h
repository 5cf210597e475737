#pragma once

#include <string_view>
#include <vector>

namespace Corvel::Svg {

struct Point {
    double x = 0;
    double y = 0;
};

/// The next letter or number of path data: the next match of the regular expression
/// "([MmLlHhVvCcQqZz])|(-?\d*\.?\d+(?:[eE][-+]?\d+)?)" at or behind `position`, which moves just
/// past it. Empty at the end of the text.
std::string_view next_path_token(std::string_view text, std::size_t& position);

/// Reads path data (SVG 1.1, 8.3) as a chain of points; each curve becomes sixteen of them. The
/// commands S, T and A are not known: their letters are skipped, and their numbers go to the
/// command before. A command with too few numbers is left out.
std::vector<Point> parse_path(std::string_view text);

} // namespace Corvel::Svg
