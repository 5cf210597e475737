#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Asks the builder for the versions of the project shown and fills the table when it answers. An
/// answer that comes after another query, or for another project, is dropped.
void refresh_versions(const Context& context);
void fill_versions_panel(const Context& context, const Json& project);

} // namespace Lumenfold
