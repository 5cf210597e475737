#include "layers/load_limits.h"

#include "layers/log.h"
#include "layers/object_records.h"

namespace Layers {

namespace {

void log_limit(const SharedName& file, std::uint64_t line, const std::string& what) {
    log_line("engine: " + file.text() + ":" + std::to_string(line) + ": " + what);
}

} // namespace

void LoadLimits::begin_file(const SharedName& file, std::size_t bytes) {
    files_.push_back(file);
    repetitions_left_ = sizes_.repetitions;
    repetitions_told_ = false;
    account({file, 0}).left += bytes;
}

bool LoadLimits::spend_repetitions(std::size_t units, std::uint64_t line) {
    if (units <= repetitions_left_) {
        repetitions_left_ -= units;
        return true;
    }
    if (!std::exchange(repetitions_told_, true))
        tell(files_.back(), line,
             "Left out declarations; the expansions of this file stand for too many.");
    repetitions_left_ = 0;
    return false;
}

void LoadLimits::tell_long_name(std::uint64_t line) {
    tell(files_.back(), line,
         "Left out a declaration; the expansions of its name stand for too much.");
}

bool LoadLimits::spend_inheritance(std::size_t units, const SourcePlace& place) {
    Account& own = account(place);
    if (own.is_closed)
        return false;
    if (units <= own.left) {
        own.left -= units;
        return true;
    }
    const std::size_t missing = units - own.left;
    own.left = 0;
    if (missing <= sizes_.common_inheritance) {
        sizes_.common_inheritance -= missing;
        return true;
    }
    own.is_closed = true;
    tell(place.file, place.line,
         "Left out what is inherited from here on; the layers of this file inherit too much.");
    return false;
}

LoadLimits::Account& LoadLimits::account(const SourcePlace& place) {
    return inheritance_.try_emplace(&place.file.text(), Account{sizes_.inheritance}).first->second;
}

bool LoadLimits::may_inherit(const SourcePlace& place) const {
    const auto account = inheritance_.find(&place.file.text());
    return account == inheritance_.end() || !account->second.is_closed;
}

void LoadLimits::tell(const SharedName& file, std::uint64_t line, const std::string& what) {
    if (told_.emplace(&file.text(), line).second)
        log_limit(file, line, what);
}

void tell_limit(const LLayer& layer, const std::string& what) {
    static std::set<std::pair<std::string, std::uint64_t>> told;
    const LLayer* at = &layer;
    while (Records::of(*at).base_place.line == 0 && at->parent() && at->parent()->as_layer())
        at = at->parent()->as_layer();
    const SourcePlace& place = Records::of(*at).base_place;
    if (told.emplace(place.file.text(), place.line).second)
        log_limit(place.file, place.line, what);
}

} // namespace Layers
