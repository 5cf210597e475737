#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace Lumenfold::Builder {

/// Tells the line of a place in a text. Lines are counted at the first question only, since most
/// documents have nothing to tell.
class LineIndex {
public:
    explicit LineIndex(std::string_view text);

    /// The line (1-based) of the byte at `offset`; of the last line for one behind the text.
    std::size_t line_at(std::size_t offset) const;

private:
    std::string_view text_;
    mutable std::vector<std::size_t> ends_; ///< offsets of line feeds, with one behind the text
};

} // namespace Lumenfold::Builder
