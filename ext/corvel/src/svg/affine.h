#pragma once

#include <string>
#include <string_view>

namespace Corvel::Svg {

/// A plane transformation as in SVG's `matrix(a,b,c,d,e,f)`: x' = a x + c y + e,
/// y' = b x + d y + f.
struct Affine {
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double e = 0;
    double f = 0;
};

/// The transformation that applies `q` first, then `p`.
Affine operator*(const Affine& p, const Affine& q);

Affine translation(double x, double y);
Affine scaling(double x, double y);
/// A rotation by `degrees` about the point (`cx`, `cy`).
Affine rotation(double degrees, double cx, double cy);

/// Reads a transform list (SVG 1.1, 7.6) of matrix, translate, scale and rotate; the first in the
/// list is the outermost. Anything else in the text is ignored.
Affine parse_transform(std::string_view text);

/// Appends "matrix(a,b,c,d,e,f)".
void append_matrix(std::string& out, const Affine& matrix);
std::string format_matrix(const Affine& matrix);

/// One function of a transform list: its name, and the text between its parentheses.
struct TransformCall {
    std::string_view name;
    std::string_view arguments;
};

/// Finds the next match of the regular expression
/// "(matrix|translate|scale|rotate)\s*\(([^)]*)\)" at or behind `position` and moves `position`
/// just past it; false if there is none. Scanned by hand: std::regex recurses for each byte.
bool next_transform_call(std::string_view text, std::size_t& position, TransformCall& call);

} // namespace Corvel::Svg
