#include "builder/pages/palette.h"

#include <algorithm>
#include <array>
#include <functional>
#include <stdexcept>

namespace Lumenfold::Builder {
namespace {

using Grounds = std::vector<Color>;

constexpr int STEPS = 64;
constexpr double FEWEST_CHROMA = 0.02; ///< below, a theme has no hue of its own
constexpr double CALM_BLUE = 250;

/// An ink of a given hue, for alerts and code.
struct Ink {
    std::string_view name;
    double hue;
};

constexpr std::array<Ink, 5> ALERTS{
    {{"note", 250}, {"tip", 155}, {"important", 300}, {"warning", 70}, {"caution", 25}}};
constexpr std::array<Ink, 9> CODE{{{"hl-k", 300},
                                   {"hl-s", 145},
                                   {"hl-n", 60},
                                   {"hl-t", 195},
                                   {"hl-f", 255},
                                   {"hl-v", 30},
                                   {"hl-i", 150},
                                   {"hl-d", 25},
                                   {"hl-m", 345}}};

bool reads(const Color& color, const Grounds& grounds, double least) {
    return std::all_of(grounds.begin(), grounds.end(),
                       [&](const Color& ground) { return contrast(color, ground) >= least; });
}

/// The first colour on the way from `color` to `goal` that `holds`; the goal if none does.
Color moved(const Color& color, const Color& goal, const std::function<bool(const Color&)>& holds) {
    for (int step = 0; step < STEPS; ++step) {
        const Color candidate = step == 0 ? color : mix(color, goal, double(step) / STEPS);
        if (holds(candidate))
            return candidate;
    }
    return goal;
}

/// A colour that reads on all grounds: on the way to the text's lightness first, which keeps the
/// hue, then on the way to the text's colour.
Color readable(const Color& color, const Color& text, const Grounds& grounds,
               double least = TEXT_CONTRAST) {
    const auto holds = [&](const Color& one) { return reads(one, grounds, least); };
    PolarColor polar = to_polar(color);
    const double distance = to_polar(text).lightness - polar.lightness;
    for (int step = 0; step < STEPS && !holds(from_polar(polar)); ++step)
        polar.lightness += distance / STEPS;
    return moved(holds(color) ? color : from_polar(polar), text, holds);
}

/// Makes one palette; remembers what messages need.
class PaletteMaker {
public:
    PaletteMaker(const Corvel::Theme& theme, Messages& messages)
        : theme_(theme)
        , messages_(messages) {}

    Palette make(std::string_view accent) {
        choose_grounds();
        choose_accent(accent);
        choose_inks();
        return std::move(palette_);
    }

private:
    const Color& set(std::string_view name, const Color& color) {
        palette_.colors.emplace_back(name, color);
        return color;
    }

    Color theme_color(const std::string& key) const {
        if (const auto color = parse_color(Corvel::theme_value(theme_, key)))
            return *color;
        for (const auto& [name, value] : Corvel::default_theme())
            if (name == key)
                return parse_color(std::get<std::string>(value)).value_or(Color{});
        return {};
    }

    /// Tells of a colour that somebody chose and that had to change.
    Color told(const std::string& what, const Color& chosen, const Color& used) {
        if (css_color(chosen) != css_color(used))
            messages_.push_back({Severity::Advanced,
                                 {},
                                 0,
                                 what + " " + css_color(chosen) + " does not read in the theme \"" +
                                     theme_.name + "\": " + css_color(used) +
                                     " is used in its place"});
        return used;
    }

    /// A ground of the theme on which its text reads.
    void set_ground(std::string_view name, const std::string& key) {
        const Color chosen = theme_color(key);
        const auto carries = [this](const Color& ground) {
            return contrast(text_, ground) >= TEXT_CONTRAST;
        };
        set(name, told("The ground \"" + key + "\"", chosen, moved(chosen, page_, carries)));
        grounds_.push_back(palette_.at(name));
    }

    void choose_grounds() {
        page_ = theme_color("Secondary");
        const Color chosen = theme_color("Foreground");
        const Color black{0, 0, 0};
        const Color white{1, 1, 1};
        const Color& far = contrast(page_, black) > contrast(page_, white) ? black : white;
        text_ = told("The text colour", chosen, readable(chosen, far, {page_}));
        palette_.dark = to_polar(page_).lightness < to_polar(text_).lightness;
        set("text", text_);
        set("page", page_);
        grounds_.push_back(page_);
        set_ground("surface", "Primary");
        set_ground("hero-start", "Gradient.Start Color");
        set_ground("hero-end", "Gradient.End Color");
        set("line", mix(page_, text_, 0.16));
        set("edge", readable(mix(page_, text_, 0.4), text_, grounds_, EDGE_CONTRAST));
    }

    double own_hue() const {
        const PolarColor ground = to_polar(theme_color("Gradient.Start Color"));
        return ground.chroma < FEWEST_CHROMA ? CALM_BLUE : ground.hue;
    }

    Color ink(double hue, double chroma) const {
        return from_polar({palette_.dark ? 0.78 : 0.5, chroma, hue});
    }

    void choose_accent(std::string_view accent) {
        const std::optional<Color> chosen = parse_color(accent);
        const Color wished = chosen.value_or(ink(own_hue(), 0.13));
        const Color tint = mix(page_, readable(wished, text_, grounds_), 0.14);
        const Color soft = moved(tint, page_, [this](const Color& ground) {
            return contrast(text_, ground) >= TEXT_CONTRAST;
        });
        grounds_.push_back(set("soft", soft));
        const Color used = readable(wished, text_, grounds_);
        set("accent", chosen ? told("The accent", wished, used) : used);
        set("on-accent", page_);
        set("muted", readable(mix(page_, text_, 0.68), text_, grounds_));
    }

    void choose_inks() {
        for (const auto& [name, hue] : ALERTS)
            set(name, readable(ink(hue, 0.13), text_, grounds_));
        const Grounds code{page_, palette_.at("surface")};
        set("hl-c", readable(mix(page_, text_, 0.6), text_, code));
        for (const auto& [name, hue] : CODE)
            set(name, readable(ink(hue, 0.12), text_, code));
    }

    const Corvel::Theme& theme_;
    Messages& messages_;
    Palette palette_;
    Color page_;
    Color text_;
    Grounds grounds_;
};

} // namespace

const Color& Palette::at(std::string_view name) const {
    for (const auto& [own, color] : colors)
        if (own == name)
            return color;
    throw std::out_of_range("no colour of this name");
}

Palette make_palette(const Corvel::Theme& theme, std::string_view accent, Messages& messages) {
    return PaletteMaker(theme, messages).make(accent);
}

} // namespace Lumenfold::Builder
