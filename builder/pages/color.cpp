#include "builder/pages/color.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace Lumenfold::Builder {
namespace {

constexpr double DEGREE = std::numbers::pi / 180;

/// OKLab: lightness, green to red, blue to yellow.
struct Lab {
    double lightness;
    double a;
    double b;
};

double to_linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double from_linear(double part) {
    return part <= 0.0031308 ? part * 12.92 : 1.055 * std::pow(part, 1 / 2.4) - 0.055;
}

// Matrices by Björn Ottosson, "A perceptual color space for image processing".
Lab to_lab(const Color& color) {
    const double r = to_linear(color.red);
    const double g = to_linear(color.green);
    const double b = to_linear(color.blue);
    const double l = std::cbrt(0.4122214708 * r + 0.5363325363 * g + 0.0514459929 * b);
    const double m = std::cbrt(0.2119034982 * r + 0.6806995451 * g + 0.1073969566 * b);
    const double s = std::cbrt(0.0883024619 * r + 0.2817188376 * g + 0.6299787005 * b);
    return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
            1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s,
            0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s};
}

Color from_lab(const Lab& lab) {
    const double l = std::pow(lab.lightness + 0.3963377774 * lab.a + 0.2158037573 * lab.b, 3);
    const double m = std::pow(lab.lightness - 0.1055613458 * lab.a - 0.0638541728 * lab.b, 3);
    const double s = std::pow(lab.lightness - 0.0894841775 * lab.a - 1.2914855480 * lab.b, 3);
    return {from_linear(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s),
            from_linear(-1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s),
            from_linear(-0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s)};
}

bool is_shown(const Color& color) {
    constexpr double SLACK = 1e-4;
    for (const double part : {color.red, color.green, color.blue})
        if (!(part >= -SLACK && part <= 1 + SLACK))
            return false;
    return true;
}

Color clamped(const Color& color) {
    const auto clamp = [](double part) { return std::isnan(part) ? 0 : std::clamp(part, 0., 1.); };
    return {clamp(color.red), clamp(color.green), clamp(color.blue)};
}

int to_byte(double part) {
    return static_cast<int>(std::lround(std::clamp(part, 0., 1.) * 255));
}

double luminance(const Color& color) {
    const auto part = [](double value) { return to_linear(to_byte(value) / 255.); };
    return 0.2126 * part(color.red) + 0.7152 * part(color.green) + 0.0722 * part(color.blue);
}

int hex_digit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

std::optional<Color> parse_color(std::string_view text) {
    if (!text.starts_with('#') || (text.size() != 4 && text.size() != 7 && text.size() != 9))
        return std::nullopt;
    std::array<int, 8> digits{};
    for (std::size_t i = 1; i < text.size(); ++i)
        if ((digits.at(i - 1) = hex_digit(text[i])) < 0)
            return std::nullopt;
    const auto part = [&](std::size_t i) {
        return text.size() == 4 ? digits.at(i) / 15.
                                : (digits.at(2 * i) * 16 + digits.at(2 * i + 1)) / 255.;
    };
    return Color{part(0), part(1), part(2)};
}

std::string css_color(const Color& color) {
    static constexpr std::string_view DIGITS = "0123456789abcdef";
    std::string text = "#";
    for (const double part : {color.red, color.green, color.blue}) {
        const auto byte = static_cast<std::size_t>(to_byte(part));
        text += DIGITS[byte / 16];
        text += DIGITS[byte % 16];
    }
    return text;
}

PolarColor to_polar(const Color& color) {
    const Lab lab = to_lab(color);
    return {lab.lightness, std::hypot(lab.a, lab.b), std::atan2(lab.b, lab.a) / DEGREE};
}

Color from_polar(const PolarColor& polar) {
    Color color;
    constexpr int STEPS = 32;
    for (int step = STEPS; step >= 0; --step) {
        const double chroma = polar.chroma * step / STEPS;
        color = from_lab({polar.lightness, chroma * std::cos(polar.hue * DEGREE),
                          chroma * std::sin(polar.hue * DEGREE)});
        if (is_shown(color))
            break;
    }
    return clamped(color);
}

Color mix(const Color& from, const Color& to, double share) {
    const Lab a = to_lab(from);
    const Lab b = to_lab(to);
    const auto between = [share](double x, double y) { return x + (y - x) * share; };
    return clamped(
        from_lab({between(a.lightness, b.lightness), between(a.a, b.a), between(a.b, b.b)}));
}

double contrast(const Color& a, const Color& b) {
    const double one = luminance(a) + 0.05;
    const double other = luminance(b) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

} // namespace Lumenfold::Builder
