#pragma once

#include "svg/svg_document.h"

namespace Corvel::Svg {

/// Fills the element table of `document` from its text. This is no XML parser: end tags are not
/// compared with start tags, the first ">" ends a tag, and a scan stops without a word at a
/// construct that has no end, keeping what it has.
void scan_elements(SvgDocument& document);

} // namespace Corvel::Svg
