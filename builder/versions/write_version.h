#pragma once

#include "builder/versions/building_folder.h"
#include "builder/versions/stored_version.h"

#include <string>

namespace Lumenfold::Builder {

/// `write_version` for a caller that has opened the folder before, to keep other builds away while
/// it makes the version.
bool write_version(BuildingFolder& building, const StoredVersion& version, std::string& problem);

} // namespace Lumenfold::Builder
