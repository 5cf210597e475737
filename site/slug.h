#pragma once

#include "site/result.h"

#include <string>
#include <string_view>

namespace Lumenfold {

/// Lower-case ASCII letters and digits in runs joined by single dashes.
bool is_valid_slug(std::string_view text);

/// What must hold before a slug, from a file or a field, becomes part of a path: without it
/// "../../out" would leave the site.
Result require_valid_slug(std::string_view slug);

/// ASCII letters and digits in lower case, every run of other bytes as one dash between them.
std::string slugify(std::string_view text);

} // namespace Lumenfold
