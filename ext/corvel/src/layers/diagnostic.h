#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Layers {

/// One problem found in the text of a `.lyr` file.
struct Diagnostic {
    std::uint64_t line = 0; ///< 1-based line of the offending token
    std::string message;    ///< words for the author of the file, without path or line
    std::string_view place; ///< the text at fault, in the source; null where it is none of it
};

} // namespace Layers
