#include "site/text_helpers.h"

namespace Lumenfold {

std::string trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(" \t") - first + 1));
}

} // namespace Lumenfold
