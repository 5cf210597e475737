#include "checks.h"
#include "suggestions.h"
#include "svg/css_declarations.h"
#include "svg/css_scanner.h"
#include "svg/smil.h"
#include "svg/svg_document.h"
#include "svg/svg_values.h"
#include "text_files.h"

#include <algorithm>
#include <array>
#include <set>

namespace CorvelLint {
namespace {

using Corvel::Svg::attribute;
using Corvel::Svg::SvgDocument;
using Corvel::Svg::SvgElement;

constexpr const char* PLAYED =
    "transform, opacity, x, y, width, height, cx, cy, r, rx, ry, x1, y1, x2, y2, stroke-width, "
    "stroke-dashoffset, offset, fill-opacity, stroke-opacity";

bool is_shape(const SvgElement& element) {
    constexpr std::array<std::string_view, 4> shapes{"path", "circle", "rect", "ellipse"};
    return std::find(shapes.begin(), shapes.end(), element.name) != shapes.end();
}

std::string in_ticks(std::string_view text) {
    return '`' + std::string(text) + '`';
}

class IconChecker {
public:
    IconChecker(const std::filesystem::path& file, Findings& findings)
        : file_(file.string())
        , text_(read_text(file))
        , document_(text_)
        , findings_(findings) {}

    void check() {
        check_tint();
        for (const SvgElement& element : document_.elements)
            check_element(element);
        check_style_sheets();
    }

private:
    void add(std::size_t at, std::size_t length, const std::string& message,
             const std::string& help) {
        const std::size_t line_start = at == 0 ? 0 : text_.rfind('\n', at - 1) + 1;
        findings_.add_at({file_, line_of(text_, at)}, at - line_start + 1, length, message, help);
    }

    void add(const SvgElement& element, const std::string& message, const std::string& help) {
        add(element.start, element.name_end - element.start, message, help);
    }

    void add_css(std::string_view at, const std::string& message, const std::string& help) {
        const std::size_t found = text_.find(at);
        add(found == std::string::npos ? 0 : found, at.size(), message, help);
    }

    // An icon that excludes shapes keeps colours of its own on purpose.
    void check_tint() {
        const SvgElement* shape = nullptr;
        bool has_fill = false;
        bool has_id = false;
        for (const SvgElement& element : document_.elements) {
            if (!is_shape(element))
                continue;
            const std::string_view fill = attribute(element, "fill");
            const std::string_view style = attribute(element, "style");
            const bool is_filled =
                (!fill.empty() && fill != "none") || style.find("url(") != std::string_view::npos;
            const bool is_named = !attribute(element, "id").empty();
            if (is_filled && is_named)
                return;
            shape = shape != nullptr ? shape : &element;
            has_fill |= is_filled;
            has_id |= is_named;
        }
        if (text_.find("exclude") != std::string::npos)
            return;
        if (shape == nullptr)
            add(0, 1, "no path, circle, rect or ellipse: nothing in this icon takes the tint",
                "draw it with one of these");
        else if (has_fill && !has_id)
            add(*shape, "no shape has an `id`: nothing in this icon takes the tint",
                "give the shapes an id; those that keep their colour are named in a comment "
                "`<!-- exclude=\"id\" -->`");
        else
            add(*shape, "no shape has a `fill` of its own: nothing in this icon takes the tint",
                "turn strokes into filled paths, and write `fill=\"#000\"` on each shape itself");
    }

    void check_element(const SvgElement& element) {
        if (element.name == "set" || element.name == "animateMotion" ||
            element.name == "animateColor")
            return add(element, in_ticks(element.name) + " is not played",
                       "write `animate`, `animateTransform` or keyframes of CSS");
        if (element.name != "animate" && element.name != "animateTransform")
            return;
        const std::string_view target = attribute(element, "attributeName");
        if (element.name == "animate" && target != "transform" && target != "opacity" &&
            !Corvel::Svg::is_animatable_attribute(target))
            return add(element, "an animation of " + in_ticks(target) + " is not played",
                       "what moves: " + std::string(PLAYED));
        check_values(element);
        const std::string_view count = attribute(element, "repeatCount");
        if (!count.empty() && count != "indefinite")
            add(element, "`repeatCount=\"" + std::string(count) + "\"` plays once",
                "write \"indefinite\", or more values");
        const std::string_view begin = attribute(element, "begin");
        if (!begin.empty() && Corvel::Svg::parse_time(begin) != 0)
            add(element, "`begin` is not read: the animation plays at once",
                "begin with equal values and `keyTimes`");
    }

    void check_values(const SvgElement& element) {
        const std::size_t count = Corvel::Svg::split(attribute(element, "values"), ';').size();
        const bool has_from = find_attribute(element, "from") != nullptr;
        const bool has_end = find_attribute(element, "to") || find_attribute(element, "by");
        if (count < 2 && !(count == 0 && has_from && has_end))
            return add(element, "fewer than two values: nothing is played",
                       "write `values=\"0;1\"`, or `from` with `to` or `by`");
        const std::size_t times = Corvel::Svg::split(attribute(element, "keyTimes"), ';').size();
        if (times > 0 && times != std::max<std::size_t>(count, 2))
            add(element, "`keyTimes` has another number of entries than there are values",
                "write one for each value; otherwise the values are spread evenly");
    }

    void check_style_sheets() {
        std::string css;
        for (const SvgElement& element : document_.elements)
            if (element.name == "style")
                css += element.text + '\n';
        const auto blocks = Corvel::Svg::scan_keyframes(css);
        std::set<std::string_view> names;
        for (const auto& block : blocks) {
            names.insert(block.name);
            check_keyframes(
                std::string_view(css).substr(block.body_begin, block.body_end - block.body_begin));
        }
        const std::string rest = Corvel::Svg::without_keyframes(css, blocks);
        for (const Corvel::Svg::CssRule& rule : Corvel::Svg::scan_rules(rest))
            check_rule(rule, names);
    }

    void check_keyframes(std::string_view body) {
        for (const Corvel::Svg::CssRule& rule : Corvel::Svg::scan_rules(body))
            for (const auto& [property, value] : Corvel::Svg::parse_declarations(rule.body).values)
                if (property != "transform" && property != "opacity" &&
                    property != "offset-distance" && property != "animation-timing-function")
                    add_css(property, "keyframes of " + in_ticks(property) + " are not played",
                            "what moves by keyframes: transform, opacity and offset-distance");
    }

    void check_rule(const Corvel::Svg::CssRule& rule, const std::set<std::string_view>& names) {
        const std::string_view selector = Corvel::Svg::trim(rule.prelude);
        const auto declarations = Corvel::Svg::parse_declarations(rule.body);
        const auto* shorthand = declarations.find("animation");
        const auto* name = declarations.find("animation-name");
        if (shorthand == nullptr && name == nullptr)
            return;
        if (selector.find_first_of(" >,:") != std::string_view::npos)
            return add_css(selector, "the animation of " + in_ticks(selector) + " is not played",
                           "selectors are one `#id`, `.class` or tag: write a rule for each");
        if (!names_keyframes(name != nullptr ? *name : *shorthand, names))
            add_css(selector, "the animation of " + in_ticks(selector) + " names no keyframes",
                    in_words_of(names));
    }

    static bool names_keyframes(std::string_view text, const std::set<std::string_view>& names) {
        const auto parts = Corvel::Svg::split(text, ' ');
        return std::any_of(parts.begin(), parts.end(),
                           [&names](std::string_view part) { return names.contains(part); });
    }

    static std::string in_words_of(const std::set<std::string_view>& names) {
        if (names.empty())
            return "write `@keyframes name { from { ... } to { ... } }`";
        return "there are " + in_words({names.begin(), names.end()});
    }

    std::string file_;
    std::string text_;
    SvgDocument document_;
    Findings& findings_;
};

} // namespace

void check_icon_files(const Options& options, Findings& findings) {
    for (const std::filesystem::path& folder : options.icons)
        for (const std::filesystem::path& file : files_below(folder, ".svg"))
            IconChecker(file, findings).check();
}

} // namespace CorvelLint
