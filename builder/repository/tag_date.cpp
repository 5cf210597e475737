#include "builder/repository/tag_date.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace Lumenfold::Builder {

std::string day_of(std::int64_t seconds, int offset) {
    constexpr std::int64_t FIRST = -62'135'596'800; // 0001-01-01
    constexpr std::int64_t LAST = 253'402'300'799;  // 9999-12-31
    constexpr int DAY = 24 * 60;
    if (seconds < FIRST + DAY * 60 || seconds > LAST - DAY * 60 || offset < -DAY || offset > DAY)
        return {};
    const std::chrono::sys_seconds local{std::chrono::seconds(seconds + std::int64_t{offset} * 60)};
    const std::chrono::year_month_day date{std::chrono::floor<std::chrono::days>(local)};
    std::array<char, 16> text;
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", int{date.year()},
                  unsigned{date.month()}, unsigned{date.day()});
    return text.data();
}

std::string tag_date(const git_object& target, const git_object& commit) {
    if (git_object_type(&target) == GIT_OBJECT_TAG)
        if (const auto* tagger = git_tag_tagger(reinterpret_cast<const git_tag*>(&target)))
            return day_of(tagger->when.time, tagger->when.offset);
    const auto* tagged = reinterpret_cast<const git_commit*>(&commit);
    return day_of(git_commit_time(tagged), git_commit_time_offset(tagged));
}

} // namespace Lumenfold::Builder
