#pragma once

#include "builder/files/content_hash.h"
#include "builder/files/file_io.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold::Builder {

/// A file of ours.
struct ListedFile {
    std::string path; ///< from the output folder
    /// As it was when it was written; nothing for a file that a build meant to write when it put
    /// the list down: it may be there, whole, or not.
    std::optional<FileStamp> stamp;
    ContentHash hash;     ///< of its bytes, where there is a stamp
    bool as_left = false; ///< whether the file has that stamp now; not in the list
};

struct ListedUnit {
    std::string name; ///< without control characters
    std::string sign; ///< 32 hexadecimal digits; empty for one that was not finished
    std::string note; ///< name of its note; may be empty
    std::vector<ListedFile> files;
};

/// What lies in an output folder and is ours.
///
/// It is kept in the file `.lumenfold-output`, lines of fields separated by tabs:
///
///     lumenfold-output  1
///     D  folder that a build made
///     U  sign  note  unit, to which the files below belong
///     F  size  time of change in nanoseconds  hash  path
///     P  path of a file that may be there
///     end  hash of all lines before
struct OutputList {
    std::vector<std::string> folders;
    std::vector<ListedUnit> units;
};

enum class ListState : std::uint8_t { Missing, Good, Damaged, Later };

std::string list_text(const OutputList& list);
ListState parse_list(std::string_view text, OutputList& list);

} // namespace Lumenfold::Builder
