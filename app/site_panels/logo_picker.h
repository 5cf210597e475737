#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Shows the site's logo and takes it into the preview state.
void fill_logo_picker(const Context& context, const Json& site);

void wire_logo_picker(const Context& context);

} // namespace Lumenfold
