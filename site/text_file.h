#pragma once

#include "site/result.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Lumenfold {

/// The whole file as bytes; nothing if it is no regular file or cannot be read.
std::optional<std::string> read_text_file(const std::filesystem::path& path);

/// Writes `text` in place: a hard link or a link to the file still means it afterwards. The room is
/// reserved before the old text is touched, and on any failure the old bytes are put back, or a
/// file that was not there is removed again. Fails with the path and the system's reason, also for
/// a path that is no regular file and for a file that cannot be read, which could not be put back.
Result write_text_file(const std::filesystem::path& path, std::string_view text);

/// The same, after making the folders that are missing on the way. Refuses to make one called "~":
/// who wrote it meant the home folder.
Result write_text_file_in_folders(const std::filesystem::path& path, std::string_view text);

} // namespace Lumenfold
