#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace Lumenfold::Builder {

/// What tells whether a file was touched since it was looked at last.
struct FileStamp {
    std::uint64_t size = 0;
    std::int64_t modified = 0; ///< nanoseconds since 1970
    bool operator==(const FileStamp&) const = default;
};

/// The stamp of the regular file at `path`; nothing for anything else, a link included. `path` is
/// relative to the open folder `base`, or absolute.
std::optional<FileStamp> file_stamp(int base, const char* path);

/// A whole regular file; nothing if there is none or it cannot be read. Links are followed.
std::optional<std::string> read_file(const std::filesystem::path& path);

/// Makes a file that is not there yet with these bytes. After an error no file is left.
std::optional<FileStamp> write_new_file(const std::filesystem::path& path, std::string_view bytes,
                                        std::error_code& error);

/// Whether anything stands at `path`, a link that leads nowhere included.
bool exists_at(const std::filesystem::path& path);

} // namespace Lumenfold::Builder
