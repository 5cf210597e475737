#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

void wire_readme(const Context& context);
void wire_license(const Context& context);

/// Each shows the file that the manifest names.
void fill_readme(const Context& context, const Json& project);
void fill_license(const Context& context, const Json& project);

} // namespace Lumenfold
