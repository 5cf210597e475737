#pragma once

#include "builder/repository/version_list.h"

#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// The rows as a table for people, with a line of headings; empty without rows.
std::string version_table(const std::vector<VersionRow>& rows);

/// The rows as the lines "R" that the application reads.
std::string version_records(const std::vector<VersionRow>& rows);

} // namespace Lumenfold::Builder
