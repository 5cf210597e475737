#pragma once

#include "builder/repository/git_handles.h"

#include <cstdint>
#include <string>

namespace Lumenfold::Builder {

/// The day on which somebody tagged, "YYYY-MM-DD" in that person's own time zone: of an annotated
/// tag the tagger's, else the day of the commit. Empty for a time that no calendar holds.
std::string tag_date(const git_object& target, const git_object& commit);

/// The day of a moment in seconds since 1970, seen from `offset` minutes east of UTC.
std::string day_of(std::int64_t seconds, int offset);

} // namespace Lumenfold::Builder
