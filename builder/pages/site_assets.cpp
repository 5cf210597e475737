#include "builder/pages/site_assets.h"

#include "builder/pages/palette.h"

#include <cctype>

namespace Lumenfold::Builder {

// Embedded from assets/.
extern const std::string_view SITE_CSS;
extern const std::string_view SITE_JS;
extern const std::string_view THEME_JS;

namespace {

std::string rule(std::string_view selector, const Palette& palette) {
    std::string css(selector);
    css += palette.dark ? " {\n    color-scheme: dark;\n" : " {\n    color-scheme: light;\n";
    for (const auto& [name, color] : palette.colors)
        css.append("    --").append(name).append(": ").append(css_color(color)).append(";\n");
    return css += "}\n";
}

/// Digits with at most one point, and a unit of letters.
bool is_length(std::string_view text) {
    std::size_t at = 0;
    bool digits = false;
    for (int points = 0; at < text.size(); ++at) {
        if (std::isdigit(static_cast<unsigned char>(text[at])) != 0)
            digits = true;
        else if (text[at] != '.' || ++points > 1)
            break;
    }
    const std::string_view unit = text.substr(at);
    return digits && (unit == "px" || unit == "rem" || unit == "em" || unit == "pt" ||
                      unit == "vh" || unit == "vw");
}

std::string logo_rules(const SiteStyle& style) {
    std::string css;
    if (is_length(style.logo_height))
        css += ".brand-logo { block-size: " + style.logo_height + "; }\n";
    if (is_length(style.logo_height_mobile))
        css +=
            "@media (max-width: 47.99rem) { .brand-logo { block-size: " + style.logo_height_mobile +
            "; } }\n";
    return css;
}

} // namespace

std::vector<SiteAsset> site_assets(const Corvel::Theme& theme, const Corvel::Theme& other,
                                   const SiteStyle& style, Messages& messages) {
    const Palette own = make_palette(theme, style.accent, messages);
    const Palette opposite = make_palette(other, style.accent, messages);
    const Palette& light = own.dark ? opposite : own;
    const Palette& dark = own.dark ? own : opposite;
    // The switch sets data-theme; without it the reader's system decides.
    std::string css = rule(":root", light);
    css += "@media (prefers-color-scheme: dark) {\n";
    css += rule(":root:not([data-theme=light])", dark) + "}\n";
    css += rule(":root[data-theme=dark]", dark);
    css += SITE_CSS;
    css += logo_rules(style);
    return {{"assets/site.css", std::move(css)},
            {"assets/site.js", "\"use strict\";\n{\n" + std::string(SITE_JS) + "}\n"},
            {"assets/theme.js", std::string(THEME_JS)}};
}

} // namespace Lumenfold::Builder
