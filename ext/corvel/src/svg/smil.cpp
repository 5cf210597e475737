#include "svg/smil.h"

#include "svg/svg_values.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>
#include <utility>

namespace Corvel::Svg {
namespace {

constexpr std::array<std::string_view, 18> ANIMATABLE_ATTRIBUTES = {"x",
                                                                    "y",
                                                                    "width",
                                                                    "height",
                                                                    "cx",
                                                                    "cy",
                                                                    "r",
                                                                    "rx",
                                                                    "ry",
                                                                    "x1",
                                                                    "y1",
                                                                    "x2",
                                                                    "y2",
                                                                    "stroke-width",
                                                                    "stroke-dashoffset",
                                                                    "offset",
                                                                    "fill-opacity",
                                                                    "stroke-opacity"};

/// What the element animates; nothing if that is not supported.
std::optional<TrackKind> kind_of(const SvgElement& element) {
    const std::string_view target = attribute(element, "attributeName");
    if (element.name == "animateTransform" || target == "transform") {
        const std::string_view type = attribute(element, "type");
        if (type == "translate")
            return TrackKind::Translate;
        return type == "scale" ? TrackKind::Scale : TrackKind::Rotate;
    }
    if (target == "opacity")
        return TrackKind::Opacity;
    if (is_animatable_attribute(target))
        return TrackKind::Attribute;
    return std::nullopt;
}

void append_value(std::string_view text, TrackKeys& keys) {
    append_numbers(text, keys.numbers);
    keys.end_value();
}

/// `from` and `from` + `by`, over the numbers that both have.
void append_sum(std::string_view from_text, std::string_view by_text, TrackKeys& keys) {
    append_value(from_text, keys);
    const std::vector<double> by = parse_numbers(by_text);
    const std::size_t common = std::min(keys.numbers.size(), by.size());
    for (std::size_t i = 0; i < common; ++i)
        keys.numbers.push_back(keys.numbers[i] + by[i]);
    keys.end_value();
}

void read_values(const SvgElement& element, TrackKeys& keys) {
    const std::string_view values = attribute(element, "values");
    const SvgAttribute* from = find_attribute(element, "from");
    const SvgAttribute* to = find_attribute(element, "to");
    const SvgAttribute* by = find_attribute(element, "by");
    if (!values.empty()) {
        for (const std::string_view value : split(values, ';'))
            append_value(value, keys);
    } else if (from && to) {
        append_value(from->value, keys);
        append_value(to->value, keys);
    } else if (from && by) {
        append_sum(from->value, by->value, keys);
    }
}

void read_times(const SvgElement& element, TrackKeys& keys) {
    for (const std::string_view time : split(attribute(element, "keyTimes"), ';'))
        keys.times.push_back(parse_number(time));
    if (keys.times.size() == keys.size())
        return;
    keys.times.clear();
    const auto last = static_cast<double>(keys.size() - 1);
    for (std::size_t i = 0; i < keys.size(); ++i)
        keys.times.push_back(static_cast<double>(i) / last);
}

void read_easings(const SvgElement& element, TrackKeys& keys) {
    if (attribute(element, "calcMode") != "spline")
        return;
    for (const std::string_view spline : split(attribute(element, "keySplines"), ';')) {
        const std::vector<double> n = parse_numbers(spline);
        keys.easings.push_back(n.size() == 4 ? Easing{n[0], n[1], n[2], n[3], true} : Easing{});
    }
}

AnimationTrack read_track(const SvgElement& element, TrackKind kind, TrackKeys keys) {
    AnimationTrack track;
    track.elements = std::make_shared<const std::vector<std::int32_t>>(1, element.parent);
    track.kind = kind;
    if (kind == TrackKind::Attribute)
        track.attribute = attribute(element, "attributeName");
    if (const SvgAttribute* duration = find_attribute(element, "dur"))
        track.duration = parse_time(duration->value);
    track.repeat = attribute(element, "repeatCount") == "indefinite";
    track.additive = attribute(element, "additive") == "sum";
    read_times(element, keys);
    read_easings(element, keys);
    track.keys = std::make_shared<const TrackKeys>(std::move(keys));
    return track;
}

/// The transforms that elements have in the source, each read once.
class OwnTransforms {
public:
    explicit OwnTransforms(const SvgDocument& document)
        : document_(document) {}

    const Affine& of(std::int32_t element) {
        const auto [known, is_new] = known_.try_emplace(element);
        if (is_new)
            known->second = parse_transform(attribute(document_.elements[element], "transform"));
        return known->second;
    }

private:
    const SvgDocument& document_;
    std::unordered_map<std::int32_t, Affine> known_;
};

} // namespace

bool is_animatable_attribute(std::string_view name) {
    return std::ranges::find(ANIMATABLE_ATTRIBUTES, name) != ANIMATABLE_ATTRIBUTES.end();
}

void parse_smil(SvgDocument& document, std::vector<AnimationTrack>& tracks) {
    OwnTransforms transforms(document);
    std::int32_t index = -1;
    for (const SvgElement& element : document.elements) {
        ++index;
        const bool animates = element.name == "animate" || element.name == "animateTransform";
        if (!animates || element.parent < 0)
            continue;
        const std::optional<TrackKind> kind = kind_of(element);
        if (!kind)
            continue;
        document.dropped.push_back(index);
        TrackKeys keys;
        read_values(element, keys);
        if (keys.size() < 2)
            continue;
        tracks.push_back(read_track(element, *kind, std::move(keys)));
        if (tracks.back().additive)
            tracks.back().base = transforms.of(element.parent);
    }
}

} // namespace Corvel::Svg
