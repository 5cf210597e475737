#include "svg/svg_document.h"

#include "svg/svg_scanner.h"

#include <utility>

namespace Corvel::Svg {

const SvgAttribute* find_attribute(const SvgElement& element, std::string_view name) {
    for (const SvgAttribute& candidate : element.attributes)
        if (candidate.name == name)
            return &candidate;
    return nullptr;
}

std::string_view attribute(const SvgElement& element, std::string_view name,
                           std::string_view fallback) {
    const SvgAttribute* found = find_attribute(element, name);
    return found ? found->value : fallback;
}

SvgDocument::SvgDocument(std::string source)
    : text(std::move(source)) {
    scan_elements(*this);
}

} // namespace Corvel::Svg
