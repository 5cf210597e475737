#pragma once

#include "svg/animation_track.h"
#include "svg/svg_document.h"

#include <string_view>
#include <vector>

namespace Corvel::Svg {

/// Appends the tracks of the `animate` and `animateTransform` elements (SVG 1.1, 19.2), and adds
/// those elements to `document.dropped`. Elements that animate what is not supported stay in the
/// document, without a track.
void parse_smil(SvgDocument& document, std::vector<AnimationTrack>& tracks);

/// Whether `name` is one of the numeric attributes that can be animated.
bool is_animatable_attribute(std::string_view name);

} // namespace Corvel::Svg
