#pragma once

#include <cstddef>
#include <string_view>

namespace Corvel {

/// Nesting beyond which a JSON document counts as one that does not parse: writing and comparing
/// documents recurse, and no honest file comes near it.
constexpr std::size_t MAX_JSON_DEPTH = 1000;

/// Whether objects and arrays in `text` nest deeper than `levels`. The text need not be valid.
bool json_nests_deeper_than(std::string_view text, std::size_t levels);

} // namespace Corvel
