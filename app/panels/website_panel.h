#pragma once

#include "app/shell.h"

namespace Lumenfold {

/// Wires the site's form, logo and favicons, and the reload of the site's configurator.
void wire_website_form(const Context& context);
void wire_site_images(const Context& context);

/// Refills the whole site configurator from the file of `config`.
void fill_site_panels(const Context& context, const OpenConfig& config);

} // namespace Lumenfold
