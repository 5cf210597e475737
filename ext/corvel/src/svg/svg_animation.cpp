#include "svg/svg_animation.h"

#include "svg/css.h"
#include "svg/frame_template.h"
#include "svg/smil.h"
#include "svg/svg_document.h"

#include <utility>
#include <vector>

namespace Corvel {

struct SvgAnimation::Implementation {
    Svg::FrameTemplate frame;
    double duration = 0;
    bool animated = false;
};

namespace {

std::vector<Svg::AnimationTrack> read_tracks(Svg::SvgDocument& document) {
    std::vector<Svg::AnimationTrack> tracks;
    parse_smil(document, tracks);
    parse_css(document, tracks);
    return tracks;
}

} // namespace

SvgAnimation::SvgAnimation(std::string text) {
    Svg::SvgDocument document(std::move(text));
    std::vector<Svg::AnimationTrack> tracks = read_tracks(document);
    double duration = 0;
    bool animated = false;
    for (const Svg::AnimationTrack& track : tracks) {
        if (!track.active)
            continue;
        animated = true;
        if (track.duration > duration)
            duration = track.duration;
    }
    implementation_ = std::make_unique<Implementation>(
        Implementation{Svg::FrameTemplate(document, std::move(tracks)), duration, animated});
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

std::string SvgAnimation::frame_at(double ms) const {
    return implementation_->frame.at(ms);
}

} // namespace Corvel
