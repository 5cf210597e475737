#include "svg/css.h"

#include "svg/css_declarations.h"
#include "svg/css_scanner.h"
#include "svg/keyframes.h"
#include "svg/svg_values.h"

#include <cmath>
#include <memory>
#include <utility>

namespace Corvel::Svg {
namespace {

/// What a rule says about the animation of the elements it matches.
struct Animation {
    std::string_view name;
    double duration = 1000;
    bool infinite = false;
};

Animation read_animation(const Declarations& declarations, const KeyframesTable& keyframes) {
    Animation animation;
    bool have_duration = false;
    if (const auto* name = declarations.find("animation-name"))
        animation.name = *name;
    if (const auto* duration = declarations.find("animation-duration")) {
        animation.duration = parse_time(*duration);
        have_duration = true;
    }
    if (const auto* count = declarations.find("animation-iteration-count"))
        animation.infinite = *count == "infinite";
    const auto* shorthand = declarations.find("animation");
    if (!shorthand)
        shorthand = declarations.find("-webkit-animation");
    if (!shorthand)
        return animation;
    for (const std::string_view part : split(*shorthand, ' ')) {
        if (part == "infinite") {
            animation.infinite = true;
        } else if (keyframes.contains(part)) {
            animation.name = part;
        } else if (!have_duration && is_css_time(part)) {
            animation.duration = parse_time(part);
            have_duration = true;
        }
    }
    return animation;
}

/// The polyline of "path('...')"; null if there is no point in it.
std::shared_ptr<const MotionPath> read_motion_path(std::string_view value) {
    const std::size_t open = value.find('(');
    const std::size_t close = value.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return nullptr;
    std::string_view data = trim(value.substr(open + 1, close - open - 1));
    if (data.size() >= 2 && (data.front() == '"' || data.front() == '\''))
        data = data.substr(1, data.size() - 2);
    auto path = std::make_shared<MotionPath>();
    path->points = parse_path(data);
    if (path->points.empty())
        return nullptr;
    Point last = path->points.front();
    double length = 0;
    for (const Point& point : path->points) {
        length += std::hypot(point.x - last.x, point.y - last.y);
        path->lengths.push_back(length);
        last = point;
    }
    return path;
}

/// The keys of a transform that stands still, about its origin.
std::shared_ptr<const TrackKeys> read_static_transform(std::string_view transform,
                                                       const std::string_view* origin_text) {
    Affine value = parse_transform(transform);
    const std::vector<double> origin =
        origin_text ? parse_numbers(*origin_text) : std::vector<double>{};
    if (origin.size() >= 2)
        value = translation(origin[0], origin[1]) * value * translation(-origin[0], -origin[1]);
    auto keys = std::make_shared<TrackKeys>();
    for (const double time : {0.0, 1.0}) {
        keys->times.push_back(time);
        for (const double number : {value.a, value.b, value.c, value.d, value.e, value.f})
            keys->numbers.push_back(number);
        keys->end_value();
    }
    return keys;
}

class RuleReader {
public:
    RuleReader(const SvgDocument& document, KeyframesTable& keyframes,
               std::vector<AnimationTrack>& tracks)
        : selectors_(document)
        , keyframes_(keyframes)
        , tracks_(tracks) {}

    void read(const CssRule& rule) {
        elements_ = selectors_.match_selector(rule.prelude);
        if (!elements_)
            return;
        const Declarations declarations = parse_declarations(rule.body);
        animation_ = read_animation(declarations, keyframes_);
        if (const auto* transform = declarations.find("transform")) {
            AnimationTrack track = make_track(
                TrackKind::Matrix,
                read_static_transform(*transform, declarations.find("transform-origin")));
            track.active = false;
            tracks_.push_back(std::move(track));
        }
        const KeyframeKeys& keys = keyframes_.find(animation_.name);
        if (const auto* value = declarations.find("offset-path"); value && keys.distance)
            add_motion(*value, keys.distance);
        if (keys.transform)
            tracks_.push_back(make_track(TrackKind::Matrix, keys.transform));
        if (keys.opacity)
            tracks_.push_back(make_track(TrackKind::Opacity, keys.opacity));
    }

private:
    AnimationTrack make_track(TrackKind kind, std::shared_ptr<const TrackKeys> keys) const {
        AnimationTrack track;
        track.elements = elements_;
        track.kind = kind;
        track.keys = std::move(keys);
        track.duration = animation_.duration;
        track.repeat = animation_.infinite;
        return track;
    }

    void add_motion(std::string_view offset_path, const std::shared_ptr<const TrackKeys>& keys) {
        std::shared_ptr<const MotionPath> path = read_motion_path(offset_path);
        if (!path)
            return;
        AnimationTrack track = make_track(TrackKind::MotionPath, keys);
        track.path = std::move(path);
        tracks_.push_back(std::move(track));
    }

    const SelectorIndex selectors_;
    KeyframesTable& keyframes_;
    std::vector<AnimationTrack>& tracks_;
    ElementSet elements_;
    Animation animation_;
};

/// Joins the style sheets of the document and drops their elements.
std::string collect_style_sheets(SvgDocument& document) {
    std::string css;
    std::int32_t index = 0;
    bool first = true;
    for (const SvgElement& element : document.elements) {
        if (element.name == "style") {
            if (!first)
                css += '\n';
            css += element.text;
            first = false;
            document.dropped.push_back(index);
        }
        ++index;
    }
    return css;
}

} // namespace

void parse_css(SvgDocument& document, std::vector<AnimationTrack>& tracks) {
    const std::string sheets = collect_style_sheets(document);
    const std::string_view css = trim(sheets);
    if (css.empty())
        return;
    const std::vector<CssKeyframes> blocks = scan_keyframes(css);
    const std::string rest = without_keyframes(css, blocks);
    KeyframesTable keyframes(css, blocks);
    RuleReader reader(document, keyframes, tracks);
    for (const CssRule& rule : scan_rules(rest))
        reader.read(rule);
}

} // namespace Corvel::Svg
