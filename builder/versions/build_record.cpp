#include "builder/versions/build_record.h"

#include "site/config_files.h"

#include <nlohmann/json.hpp>

#include <array>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <string_view>

namespace Lumenfold::Builder {

namespace {

/// The time of the build, or the one that it is asked to claim (a convention of reproducible
/// builds).
std::time_t build_time() {
    const char* given = std::getenv("SOURCE_DATE_EPOCH");
    const std::string_view digits = given ? given : "";
    std::time_t seconds = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), seconds);
    const bool valid = !digits.empty() && error == std::errc() && end == digits.end();
    return valid ? seconds : std::time(nullptr);
}

std::string utc_text(std::time_t seconds) {
    std::tm parts = {};
    std::array<char, 40> text = {};
    if (!::gmtime_r(&seconds, &parts))
        return {};
    const std::size_t length =
        std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
    return {text.data(), length};
}

} // namespace

std::string record_text(const StoredVersion& version, const std::string& content) {
    const Json record = {{"format", CONFIG_FORMAT_VERSION},
                         {"tag", version.tag},
                         {"commit", version.commit},
                         {"built", utc_text(build_time())},
                         {"content", content}};
    return record.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace Lumenfold::Builder
