#include "svg/svg_animation.h"

#include "svg/css.h"
#include "svg/frame_template.h"
#include "svg/smil.h"
#include "svg/svg_document.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace Corvel {

struct SvgAnimation::Implementation {
    Svg::FrameTemplate frame;
    double duration = 0;
    double end = 0;
    bool animated = false;
};

namespace {

std::vector<Svg::AnimationTrack> read_tracks(Svg::SvgDocument& document) {
    std::vector<Svg::AnimationTrack> tracks;
    parse_smil(document, tracks);
    parse_css(document, tracks);
    return tracks;
}

/// A track without a length, or with one that never passes, stands still.
double end_of(const Svg::AnimationTrack& track) {
    if (!track.active || track.duration <= 0 || !std::isfinite(track.duration))
        return 0;
    return track.repeat ? std::numeric_limits<double>::infinity() : track.duration;
}

} // namespace

SvgAnimation::SvgAnimation(std::string text) {
    Svg::SvgDocument document(std::move(text));
    std::vector<Svg::AnimationTrack> tracks = read_tracks(document);
    double duration = 0;
    double end = 0;
    bool animated = false;
    for (const Svg::AnimationTrack& track : tracks) {
        if (!track.active)
            continue;
        animated = true;
        if (track.duration > duration)
            duration = track.duration;
        end = std::max(end, end_of(track));
    }
    implementation_ = std::make_unique<Implementation>(
        Implementation{Svg::FrameTemplate(document, std::move(tracks)), duration, end, animated});
}

SvgAnimation::~SvgAnimation() = default;
SvgAnimation::SvgAnimation(SvgAnimation&&) noexcept = default;
SvgAnimation& SvgAnimation::operator=(SvgAnimation&&) noexcept = default;

bool SvgAnimation::is_animated() const {
    return implementation_->animated;
}

double SvgAnimation::duration() const {
    return implementation_->duration;
}

double SvgAnimation::end() const {
    return implementation_->end;
}

std::string SvgAnimation::frame_at(double ms) const {
    return implementation_->frame.at(ms);
}

} // namespace Corvel
