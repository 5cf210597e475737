#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

/// The site's form, logo, favicons and home page.
void wire_website_panel(const Context& context);
void fill_website_panel(const Context& context, const Json& site);

} // namespace Lumenfold
