#include "site/records.h"

namespace Lumenfold {

std::string slugify(std::string_view text) {
    std::string slug;
    bool separator_pending = false;
    for (const char c : text) {
        const bool upper = c >= 'A' && c <= 'Z';
        if (!upper && !(c >= 'a' && c <= 'z') && !(c >= '0' && c <= '9')) {
            separator_pending = true;
            continue;
        }
        if (separator_pending && !slug.empty())
            slug += '-';
        separator_pending = false;
        slug += upper ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return slug;
}

std::string trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(" \t") - first + 1));
}

} // namespace Lumenfold
