#include "update/update_check.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvel {
namespace {

struct Version {
    std::vector<std::string_view> core;
    std::vector<std::string_view> pre_release; ///< empty for a release
};

std::vector<std::string_view> split_at_dots(std::string_view text) {
    std::vector<std::string_view> parts;
    for (std::size_t start = 0;;) {
        const std::size_t dot = text.find('.', start);
        parts.push_back(text.substr(start, dot - start));
        if (dot == std::string_view::npos)
            return parts;
        start = dot + 1;
    }
}

Version split_version(std::string_view text) {
    if (!text.empty() && (text.front() == 'v' || text.front() == 'V'))
        text.remove_prefix(1);
    text = text.substr(0, text.find('+'));
    const std::size_t dash = text.find('-');
    Version version;
    version.core = split_at_dots(text.substr(0, dash));
    if (dash != std::string_view::npos && dash + 1 < text.size())
        version.pre_release = split_at_dots(text.substr(dash + 1));
    return version;
}

bool is_numeric(std::string_view part) {
    return !part.empty() &&
           std::all_of(part.begin(), part.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// A numeric part of any length in a form that compares as the number does: by the count of digits,
/// then by the digits. 0 for any other part.
using Number = std::pair<std::size_t, std::string_view>;

Number number_of(std::string_view part) {
    if (!is_numeric(part))
        return {};
    part.remove_prefix(std::min(part.find_first_not_of('0'), part.size()));
    return {part.size(), part};
}

/// Above 0 if `a` is greater, 0 if equal, below 0 if less.
template <class Value>
int order(const Value& a, const Value& b) {
    return (b < a) - (a < b);
}

int compare_cores(const Version& a, const Version& b) {
    const std::size_t length = std::max(a.core.size(), b.core.size());
    for (std::size_t i = 0; i < length; ++i) {
        const Number left = i < a.core.size() ? number_of(a.core[i]) : Number();
        const Number right = i < b.core.size() ? number_of(b.core[i]) : Number();
        if (left != right)
            return order(left, right);
    }
    return 0;
}

int compare_identifiers(std::string_view a, std::string_view b) {
    if (is_numeric(a) && is_numeric(b))
        return order(number_of(a), number_of(b));
    if (is_numeric(a) != is_numeric(b))
        return is_numeric(a) ? -1 : 1;
    return order(a, b);
}

int compare_pre_releases(const Version& a, const Version& b) {
    if (a.pre_release.empty() || b.pre_release.empty())
        return static_cast<int>(a.pre_release.empty()) - static_cast<int>(b.pre_release.empty());
    const std::size_t length = std::min(a.pre_release.size(), b.pre_release.size());
    for (std::size_t i = 0; i < length; ++i)
        if (const int result = compare_identifiers(a.pre_release[i], b.pre_release[i]))
            return result;
    return order(a.pre_release.size(), b.pre_release.size());
}

} // namespace

int compare_versions(std::string_view a, std::string_view b) {
    const Version left = split_version(a);
    const Version right = split_version(b);
    const int cores = compare_cores(left, right);
    return cores != 0 ? cores : compare_pre_releases(left, right);
}

} // namespace Corvel
