#pragma once

#include <cstdint>
#include <string>

namespace Layers {

/// One problem found in the text of a `.lyr` file.
struct Diagnostic {
    std::uint64_t line = 0; ///< 1-based line of the offending token
    std::string message;    ///< words for the author of the file, without path or line

    friend bool operator==(const Diagnostic&, const Diagnostic&) = default;
};

} // namespace Layers
