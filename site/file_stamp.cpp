#include "site/file_stamp.h"

#include <chrono>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

/// Of the coarsest clock that a file system in use keeps, that of FAT.
constexpr std::chrono::seconds TICK(2);

} // namespace

std::optional<FileStamp> stamp_of(const fs::path& path) {
    std::error_code error;
    FileStamp stamp;
    stamp.size = fs::file_size(path, error);
    if (!error)
        stamp.modified = fs::last_write_time(path, error);
    return error ? std::nullopt : std::optional(stamp);
}

bool is_settled(const FileStamp& stamp, fs::file_time_type read_at) {
    return stamp.modified + TICK < read_at;
}

} // namespace Lumenfold
