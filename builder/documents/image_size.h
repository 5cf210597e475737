#pragma once

#include <optional>
#include <string_view>

namespace Lumenfold::Builder {

/// The natural size of a picture in pixels; 0 where a file says none, as an SVG image may.
struct ImageSize {
    int width = 0;
    int height = 0;
};

/// Reads the size from a picture's header: PNG, JPEG, GIF, WebP, AVIF or SVG, told by the bytes and
/// not by a name. Nothing for anything else.
std::optional<ImageSize> image_size(std::string_view bytes);

} // namespace Lumenfold::Builder
