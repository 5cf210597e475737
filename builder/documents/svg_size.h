#pragma once

#include "builder/documents/image_size.h"

#include <optional>
#include <string_view>

namespace Lumenfold::Builder {

/// The size of an SVG image: its width and height where they are in pixels, else that of its view
/// box. Nothing if the text is no SVG.
std::optional<ImageSize> svg_size(std::string_view text);

} // namespace Lumenfold::Builder
