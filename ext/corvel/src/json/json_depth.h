#pragma once

#include <cstddef>
#include <string_view>

namespace Corvel {

/// Nesting beyond which a JSON document counts as one that does not parse: writing and comparing
/// documents recurse, and no honest file comes near it.
constexpr std::size_t MAX_JSON_DEPTH = 1000;

/// The byte (from 1) of `text` that opens an object or array below `levels` others; 0 if none does.
/// The text need not be valid.
std::size_t find_json_level_beyond(std::string_view text, std::size_t levels);

} // namespace Corvel
