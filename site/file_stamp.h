#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace Lumenfold {

/// What tells, without reading it, whether a file is still the one that was read.
struct FileStamp {
    std::uintmax_t size = 0;
    std::filesystem::file_time_type modified;

    bool operator==(const FileStamp&) const = default;
};

/// The stamp of a file; nothing if there is none.
std::optional<FileStamp> stamp_of(const std::filesystem::path& path);

/// Whether what was read at `read_at` from a file found with this stamp is what the file holds as
/// long as it keeps the stamp. Not if it was written shortly before: the next write may fall into
/// the same tick of the file system's clock.
bool is_settled(const FileStamp& stamp, std::filesystem::file_time_type read_at);

} // namespace Lumenfold
