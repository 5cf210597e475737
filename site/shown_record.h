#pragma once

#include "site/json_text.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace Lumenfold {

/// A record of a list as a row or a question shows it. Whatever acts on it looks it up again, since
/// the file may have changed meanwhile.
struct ShownRecord {
    std::size_t index = 0; ///< in its list
    /// Keys and the texts shown for them, by which the record is known again; a key that it lacks
    /// has an empty text.
    std::vector<std::pair<std::string, std::string>> texts;
};

/// The record in its list; null if another, or none, stands in its place. `list` may be null.
Json* find_shown(Json* list, const ShownRecord& shown);

/// Whether two states of a list element are one record by what it is called: its texts for "slug",
/// "id", "type", "name", "label", "platform_label", "url" and "href" are equal, or both are no
/// objects and equal.
bool is_same_record(const Json& before, const Json& now);

} // namespace Lumenfold
