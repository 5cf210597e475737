#include "svg/affine.h"

#include "svg/svg_values.h"

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace Corvel::Svg {
namespace {

constexpr std::array<std::string_view, 4> FUNCTION_NAMES = {"matrix", "translate", "scale",
                                                            "rotate"};

/// The length of the function name that starts at `position`, or 0.
std::size_t function_name_at(std::string_view text, std::size_t position) {
    for (const std::string_view name : FUNCTION_NAMES)
        if (text.substr(position, name.size()) == name)
            return name.size();
    return 0;
}

Affine to_matrix(const TransformCall& call) {
    const std::vector<double> n = parse_numbers(call.arguments);
    if (call.name == "matrix")
        return n.size() >= 6 ? Affine{n[0], n[1], n[2], n[3], n[4], n[5]} : Affine{};
    if (n.empty())
        return {};
    if (call.name == "translate")
        return translation(n[0], n.size() > 1 ? n[1] : 0);
    if (call.name == "scale")
        return scaling(n[0], n.size() > 1 ? n[1] : n[0]);
    return n.size() >= 3 ? rotation(n[0], n[1], n[2]) : rotation(n[0], 0, 0);
}

} // namespace

Affine operator*(const Affine& p, const Affine& q) {
    return {p.a * q.a + p.c * q.b, p.b * q.a + p.d * q.b,       p.a * q.c + p.c * q.d,
            p.b * q.c + p.d * q.d, p.a * q.e + p.c * q.f + p.e, p.b * q.e + p.d * q.f + p.f};
}

Affine translation(double x, double y) {
    return {1, 0, 0, 1, x, y};
}

Affine scaling(double x, double y) {
    return {x, 0, 0, y, 0, 0};
}

Affine rotation(double degrees, double cx, double cy) {
    const double angle = degrees * std::numbers::pi / 180;
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    return translation(cx, cy) * Affine{cosine, sine, -sine, cosine, 0, 0} * translation(-cx, -cy);
}

bool next_transform_call(std::string_view text, std::size_t& position, TransformCall& call) {
    while (true) {
        position = text.find_first_of("mtsr", position);
        if (position == std::string_view::npos)
            return false;
        const std::size_t length = function_name_at(text, position);
        if (length == 0) {
            ++position;
            continue;
        }
        const std::string_view name = text.substr(position, length);
        position += length;
        const std::size_t open = text.find_first_not_of(" \t\n\v\f\r", position);
        if (open == std::string_view::npos)
            return false;
        if (text[open] != '(')
            continue;
        const std::size_t close = text.find(')', open);
        if (close == std::string_view::npos)
            return false; // no later call can end either
        call = {name, text.substr(open + 1, close - open - 1)};
        position = close + 1;
        return true;
    }
}

Affine parse_transform(std::string_view text) {
    Affine result;
    TransformCall call;
    for (std::size_t position = 0; next_transform_call(text, position, call);)
        result = result * to_matrix(call);
    return result;
}

void append_matrix(std::string& out, const Affine& matrix) {
    char separator = '(';
    out += "matrix";
    for (const double number : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
        out += separator;
        append_number(out, number);
        separator = ',';
    }
    out += ')';
}

std::string format_matrix(const Affine& matrix) {
    std::string text;
    append_matrix(text, matrix);
    return text;
}

} // namespace Corvel::Svg
