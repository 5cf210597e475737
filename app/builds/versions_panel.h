#pragma once

#include "app/shell.h"

#include <cstddef>

namespace Lumenfold {

/// Asks the builder for the versions of the project shown and fills the table when it answers. An
/// answer that comes after another query, or for another project, is dropped.
void refresh_versions(const Context& context);

/// Sets the number of versions that wait for a build, which labels and enables the project's Build
/// button.
void set_pending_count(AppContext& context, std::size_t count);
/// The same with the number known, after a build began or ended.
void refresh_pending_count(AppContext& context);

} // namespace Lumenfold
