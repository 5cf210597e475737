#include "builder/repository/version_tag.h"

#include <utility>

namespace Lumenfold::Builder {

namespace {

constexpr std::string_view DIGITS = "0123456789";

/// Takes a number from the front of `text`; empty if none stands there.
std::string_view take_number(std::string_view& text) {
    std::size_t length = text.find_first_not_of(DIGITS);
    if (length == std::string_view::npos)
        length = text.size();
    const std::string_view number = text.substr(0, length);
    if (number.size() > 1 && number.front() == '0')
        return {};
    text.remove_prefix(length);
    return number;
}

bool take(std::string_view& text, char expected) {
    if (!text.starts_with(expected))
        return false;
    text.remove_prefix(1);
    return true;
}

} // namespace

std::string VersionTag::label() const {
    return std::string(major) + '.' + std::string(minor);
}

std::optional<VersionTag> parse_version_tag(std::string_view name) {
    VersionTag tag;
    tag.has_v = take(name, 'v');
    tag.major = take_number(name);
    if (tag.major.empty() || !take(name, '.'))
        return std::nullopt;
    tag.minor = take_number(name);
    if (tag.minor.empty() || !take(name, '.'))
        return std::nullopt;
    tag.patch = take_number(name);
    if (tag.patch.empty() || !name.empty())
        return std::nullopt;
    return tag;
}

std::strong_ordering compare_numbers(std::string_view a, std::string_view b) {
    if (const auto by_length = a.size() <=> b.size(); by_length != 0)
        return by_length;
    return a <=> b;
}

bool comes_before(const VersionTag& a, const VersionTag& b) {
    for (const auto part : {&VersionTag::major, &VersionTag::minor, &VersionTag::patch})
        if (const auto order = compare_numbers(a.*part, b.*part); order != 0)
            return order > 0;
    return !a.has_v && b.has_v;
}

bool looks_like_version(std::string_view name) {
    if (take(name, 'v') || take(name, 'V'))
        take(name, '.');
    return !name.empty() && DIGITS.find(name.front()) != std::string_view::npos &&
           name.find('.') != std::string_view::npos &&
           name.find_first_not_of("0123456789.xX*") == std::string_view::npos;
}

} // namespace Lumenfold::Builder
