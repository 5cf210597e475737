#pragma once

#include "builder/documents/link_resolver.h"
#include "builder/documents/markdown_sink.h"

#include <string>

namespace Lumenfold::Builder {

/// Appends an <img>. It has width and height wherever they are known, so that the page keeps its
/// room: the author's own, filled up by the natural proportion, else the natural size. A width in
/// percent becomes the class "width-50" (in steps of ten), since pages have no style attributes.
void append_picture_tag(std::string& html, const ImageText& image, const ImageTarget& target);

} // namespace Lumenfold::Builder
