#pragma once

#include "svg/animation_track.h"
#include "svg/svg_document.h"

#include <vector>

namespace Corvel::Svg {

/// Appends the tracks of the style sheets in the document's `style` elements (CSS Animations:
/// keyframes of transform, opacity and offset-distance, and transforms that stand still), and adds
/// those elements to `document.dropped`.
void parse_css(SvgDocument& document, std::vector<AnimationTrack>& tracks);

} // namespace Corvel::Svg
