#include "svg/frame_by_edits.h"

#include "svg/css.h"
#include "svg/smil.h"
#include "svg/svg_document.h"
#include "svg/track_sampler.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace {

using namespace Corvel::Svg;

struct Edit {
    std::size_t position;
    std::size_t length;
    std::string replacement;
};

/// The values of an element; the names sort as they are written.
struct Results {
    std::string matrix;
    std::string opacity;
    std::map<std::string, std::string> attributes;

    std::vector<std::pair<std::string, std::string>> pairs() const {
        std::vector<std::pair<std::string, std::string>> all;
        if (!matrix.empty())
            all.emplace_back("transform", matrix);
        if (!opacity.empty())
            all.emplace_back("opacity", opacity);
        all.insert(all.end(), attributes.begin(), attributes.end());
        return all;
    }
};

std::map<std::int32_t, Results> run_tracks(const std::vector<AnimationTrack>& tracks, double ms) {
    std::map<std::int32_t, Results> results;
    for (const AnimationTrack& track : tracks) {
        std::string value;
        if (!append_track_value(value, track, ms))
            continue;
        for (const std::int32_t element : *track.elements) {
            Results& result = results[element];
            if (track.kind == TrackKind::Opacity)
                result.opacity = value;
            else if (track.kind == TrackKind::Attribute)
                result.attributes[track.attribute] = value;
            else
                result.matrix = value;
        }
    }
    return results;
}

std::string apply(const std::string& source, std::vector<Edit> edits) {
    std::ranges::stable_sort(edits, {}, &Edit::position);
    std::string out;
    std::size_t cursor = 0;
    for (const Edit& edit : edits) {
        if (cursor > edit.position)
            continue;
        out += source.substr(cursor, edit.position - cursor) + edit.replacement;
        cursor = edit.position + edit.length;
    }
    return out + source.substr(cursor);
}

} // namespace

std::string frame_by_edits(const std::string& source, double ms) {
    SvgDocument document(source);
    std::vector<AnimationTrack> tracks;
    parse_smil(document, tracks);
    parse_css(document, tracks);

    std::vector<Edit> edits;
    for (const std::int32_t index : document.dropped) {
        const SvgElement& element = document.elements[index];
        if (element.start < element.end)
            edits.push_back({element.start, element.end - element.start, ""});
    }
    for (const auto& [index, results] : run_tracks(tracks, ms)) {
        const SvgElement& element = document.elements[index];
        std::string extra;
        for (const auto& [name, value] : results.pairs()) {
            if (const SvgAttribute* found = find_attribute(element, name))
                edits.push_back({found->value_start, found->value_end - found->value_start, value});
            else
                extra += " " + name + "=\"" + value + "\"";
        }
        if (!extra.empty())
            edits.push_back({element.name_end, 0, extra});
    }
    return apply(source, std::move(edits));
}
