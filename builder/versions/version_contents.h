#pragma once

#include "builder/versions/stored_version.h"

#include <optional>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

// The texts of a version's folder, files aside.

inline constexpr const char* CONTENTS_FILE = "contents.json";
inline constexpr const char* PAGES_FILE = "pages.html";
inline constexpr const char* SEARCH_FILE = "search.txt";

std::string contents_text(const StoredVersion& version);
std::string pages_text(const StoredVersion& version);
std::string search_text(const StoredVersion& version);

/// The version that a contents.json tells of, without bodies; nothing if it does not parse, lacks
/// something or is of a later format. `sizes` gets each page's bytes in pages.html.
std::optional<StoredVersion> parse_contents(std::string_view text, std::vector<std::size_t>& sizes);

/// Puts the bodies in. False if the sizes are not those of the text.
bool add_bodies(StoredVersion& version, std::string_view pages,
                const std::vector<std::size_t>& sizes);
/// Puts the sections in. False if the text has not one part for each page.
bool add_sections(StoredVersion& version, std::string_view search);

} // namespace Lumenfold::Builder
