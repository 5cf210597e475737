#pragma once

#include "app/context/build_state.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Lumenfold {

/// One line of the builder's machine-readable output: a one-letter tag, a tab and a text.
struct PorcelainRecord {
    char tag = 0;
    std::string_view text; ///< into the line
};

/// The line without the terminal's control sequences (ECMA-48: ESC "[", parameters, a letter).
std::string without_colours(std::string_view line);

/// Nothing for a line whose second character is no tab.
std::optional<PorcelainRecord> parse_porcelain(std::string_view line);

/// The five tab-separated fields of a version record; nothing for any other number of fields.
std::optional<VersionRowUi> parse_version_record(std::string_view text);

/// What a version list said, in the order of its lines.
struct VersionListing {
    std::vector<VersionRowUi> rows;
    std::vector<std::string> messages;

    /// Takes one line of the builder's output; lines that are neither version nor error are
    /// ignored.
    void add_line(std::string_view line);
};

} // namespace Lumenfold
