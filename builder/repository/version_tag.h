#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

/// The numbers of a version's tag as they stand in its name: of any length, without leading zeros.
/// Valid as long as the name is.
struct VersionTag {
    std::string_view major;
    std::string_view minor;
    std::string_view patch;
    bool has_v = false; ///< "v1.2.3"

    /// "X.Y"
    std::string label() const;
};

/// The version that a tag "X.Y.Z" or "vX.Y.Z" names; nothing for any other name.
std::optional<VersionTag> parse_version_tag(std::string_view name);

/// Compares decimal numbers without leading zeros, of any length.
std::strong_ordering compare_numbers(std::string_view a, std::string_view b);

/// Whether `a` stands before `b` in a list of versions: newer first, and of two names of one
/// version the one without "v".
bool comes_before(const VersionTag& a, const VersionTag& b);

/// Whether a name that is no version's looks as if it was meant to be one: digits, dots and
/// perhaps an "x", such as "1.2", "v1.02.3", "V1.2.3" or "3.x". Pre-releases ("1.2.3-rc.1"), names
/// of series ("v4") and tags with words are no accident.
bool looks_like_version(std::string_view name);

} // namespace Lumenfold::Builder
