#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

#include <string>

namespace Lumenfold {

/// Fills the fields of the website form from the site's configuration; a missing key empties its
/// field.
void fill_website_fields(const Context& context, const Json& site);

void wire_website_fields(const Context& context);

/// The site's title as it stands in its field.
std::string site_title(const AppContext& context);

} // namespace Lumenfold
