#include "site/slug.h"

namespace Lumenfold {

bool is_valid_slug(std::string_view text) {
    char previous = '-'; // so that a leading dash counts as a second one
    for (const char c : text) {
        const bool letter_or_digit = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        if (!letter_or_digit && (c != '-' || previous == '-'))
            return false;
        previous = c;
    }
    return previous != '-';
}

Result require_valid_slug(std::string_view slug) {
    if (is_valid_slug(slug))
        return {};
    return Result::failed("The slug '" + std::string(slug) +
                          "' cannot name a folder: use lowercase letters and digits in "
                          "dash-separated runs.");
}

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

} // namespace Lumenfold
