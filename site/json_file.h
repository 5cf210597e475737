#pragma once

#include "site/json_text.h"
#include "site/text_file.h"

#include <filesystem>
#include <optional>

namespace Lumenfold {

/// Reads and parses a file; nothing if it cannot be opened or does not parse.
std::optional<Json> read_json_file(const std::filesystem::path& path);

/// Writes the normal form in place as `write_text_file` does; a document with no normal form fails
/// without touching the file.
Result write_config_file(const std::filesystem::path& path, const Json& json);

} // namespace Lumenfold
