#pragma once

#include "layers/node_style.h"

class QWidget;

namespace Corvel {

class IconWidget;
class MediaWidget;

/// A size of a style in whole pixels: truncated, and held within what Qt can lay out.
int whole_pixels(double value);

/// Fixes each side that the style sets (truncated) and frees the others.
void apply_fixed_size(QWidget* widget, const NodeStyle& style);

/// Fixes the sides of an icon; a side left unset follows the other by the picture's proportions.
void apply_icon_size(IconWidget* icon, const NodeStyle& style);

/// Sizes a picture or video by its aspect ratio, by its natural proportions (fit "Aspect") or by
/// the style's sides alone.
void apply_media_size(MediaWidget* media, const NodeStyle& style);

} // namespace Corvel
