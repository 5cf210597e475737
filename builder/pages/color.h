#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// An opaque colour: sRGB, each part from 0 to 1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
};

/// The same in OKLCh, where equal steps look equal: lightness 0 to 1, chroma (0 is grey), hue in
/// degrees.
struct PolarColor {
    double lightness = 0;
    double chroma = 0;
    double hue = 0;
};

/// "#rgb", "#rrggbb" or "#rrggbbaa"; a transparency is passed over. Nothing for other texts.
std::optional<Color> parse_color(std::string_view text);
/// "#rrggbb".
std::string css_color(const Color& color);

PolarColor to_polar(const Color& color);
/// A colour that screens cannot show gives the nearest of the same lightness and hue.
Color from_polar(const PolarColor& polar);

/// From `from` (share 0) to `to` (share 1) by equal looks.
Color mix(const Color& from, const Color& to, double share);

/// WCAG's contrast ratio of two colours as they are written by css_color: 1 to 21.
double contrast(const Color& a, const Color& b);

} // namespace Lumenfold::Builder
