#include "builder/documents/line_index.h"

#include <algorithm>

namespace Lumenfold::Builder {

LineIndex::LineIndex(std::string_view text)
    : text_(text) {}

std::size_t LineIndex::line_at(std::size_t offset) const {
    if (ends_.empty()) {
        for (std::size_t at = 0; (at = text_.find('\n', at)) != std::string_view::npos; ++at)
            ends_.push_back(at);
        ends_.push_back(text_.size());
    }
    const auto end = std::lower_bound(ends_.begin(), ends_.end(), std::min(offset, text_.size()));
    return static_cast<std::size_t>(end - ends_.begin()) + 1;
}

} // namespace Lumenfold::Builder
