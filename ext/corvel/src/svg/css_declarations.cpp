#include "svg/css_declarations.h"

#include "svg/svg_values.h"

namespace Corvel::Svg {

const std::string_view* Declarations::find(std::string_view property) const {
    const auto found = values.find(property);
    return found == values.end() ? nullptr : &found->second;
}

Declarations parse_declarations(std::string_view text) {
    Declarations declarations;
    for (const std::string_view part : split(text, ';')) {
        const std::size_t colon = part.find(':');
        if (colon == std::string_view::npos)
            continue;
        const std::string_view name = trim(part.substr(0, colon));
        const std::string_view value = trim(part.substr(colon + 1));
        if (name == "animation-timing-function")
            declarations.timing = value;
        if (!name.empty())
            declarations.values[name] = value;
    }
    return declarations;
}

std::vector<double> parse_keyframe_offsets(std::string_view text) {
    std::vector<double> offsets;
    for (const std::string_view part : split(text, ',')) {
        if (part == "from") {
            offsets.push_back(0);
        } else if (part == "to") {
            offsets.push_back(1);
        } else {
            offsets.push_back(parse_percentage(part));
        }
    }
    return offsets;
}

} // namespace Corvel::Svg
