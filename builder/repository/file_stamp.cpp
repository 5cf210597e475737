#include "builder/repository/file_stamp.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <sys/stat.h>

namespace Lumenfold::Builder {

namespace {

constexpr std::int64_t SECOND = 1'000'000'000;

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * SECOND + time.tv_nsec;
}

std::int64_t now() {
    const auto since_epoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(since_epoch).count();
}

/// The kernel's clock for files ticks every few milliseconds; a file system that keeps whole
/// seconds only may round them to two.
bool is_fresh(std::int64_t changed) {
    const std::int64_t tick = changed % SECOND == 0 ? 2 * SECOND : SECOND / 20;
    return changed + tick > now();
}

} // namespace

std::string file_stamp(const std::filesystem::path& path) {
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        return {};
    const std::int64_t modified = nanoseconds(status.st_mtim);
    const std::int64_t changed = nanoseconds(status.st_ctim);
    std::string stamp = std::to_string(status.st_mode) + '-' + std::to_string(status.st_size) +
                        '-' + std::to_string(modified) + '-' + std::to_string(changed) + '-' +
                        std::to_string(status.st_ino);
    static std::atomic<unsigned> fresh_stamps = 0;
    if (is_fresh(std::max(modified, changed)))
        stamp += "-fresh-" + std::to_string(now()) + '-' + std::to_string(++fresh_stamps);
    return stamp;
}

} // namespace Lumenfold::Builder
