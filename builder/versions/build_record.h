#pragma once

#include "builder/versions/stored_version.h"

#include <string>

namespace Lumenfold::Builder {

/// The bytes of a version's `.lumenfold-built`: `format`, `tag`, `commit`, `built` (UTC; the time
/// that SOURCE_DATE_EPOCH names, where it is set) and `content`, the hash of all that the version
/// holds.
std::string record_text(const StoredVersion& version, const std::string& content);

} // namespace Lumenfold::Builder
