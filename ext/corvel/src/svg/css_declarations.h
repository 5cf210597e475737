#pragma once

#include <map>
#include <string_view>
#include <vector>

namespace Corvel::Svg {

/// The declarations of a block: a later one of the same property wins.
struct Declarations {
    std::map<std::string_view, std::string_view> values;
    std::string_view timing; ///< the value of "animation-timing-function"

    /// The value of a property, or null.
    const std::string_view* find(std::string_view property) const;
};

/// Reads "property: value; ..."; the result refers to `text`.
Declarations parse_declarations(std::string_view text);

/// Reads the selector of a keyframe, "from", "to" or percentages, as numbers from 0 to 1.
std::vector<double> parse_keyframe_offsets(std::string_view text);

} // namespace Corvel::Svg
