#pragma once

#include <string_view>

namespace Lumenfold::Builder {

/// Whether a relative path with "/" can name a file of ours: no empty, "." or ".."
/// component, no control characters or backslashes, no component longer than 255 bytes.
bool is_fit_path(std::string_view path);

} // namespace Lumenfold::Builder
