#pragma once

#include "builder/pages/color.h"
#include "builder/report/message.h"
#include "theme/theme.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Lumenfold::Builder {

/// The contrast that text has to its ground everywhere (WCAG 2, level AA).
inline constexpr double TEXT_CONTRAST = 4.5;
/// The contrast of a field's edge.
inline constexpr double EDGE_CONTRAST = 3;

/// The colours of the style sheet by the names of its custom properties, without "--". Text may
/// stand on "page", "surface", "soft", "hero-start" and "hero-end".
struct Palette {
    bool dark = false;
    std::vector<std::pair<std::string_view, Color>> colors;

    const Color& at(std::string_view name) const;
};

/// Makes the colours of a site from a theme's. `accent` may be empty: then one is chosen that suits
/// the theme. A colour that would not read is moved until it does; what the theme's or the site's
/// owner has chosen is told then.
Palette make_palette(const Corvel::Theme& theme, std::string_view accent, Messages& messages);

} // namespace Lumenfold::Builder
