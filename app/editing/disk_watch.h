#pragma once

#include "app/context/context.h"

#include <filesystem>

namespace Lumenfold {

/// Notes that the panels show what a file holds now. What was noted is forgotten when a
/// configuration is read anew.
void watch_file(AppContext& context, const std::filesystem::path& file);

/// Brings what is shown in line with the disk: files that other programs changed are read again.
/// Unsaved text stays and is told that it is behind.
void compare_shown_with_disk(const Context& context);

} // namespace Lumenfold
