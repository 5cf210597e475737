#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

#include <string>

namespace Lumenfold {

/// Shows the site's favicons and what they are made from. The preview state holds the logo
/// already.
void fill_favicon_picker(const Context& context, const Json& site);

void wire_favicon_picker(const Context& context);

/// Makes the favicons anew from a logo just chosen, if they are to follow the logo.
void favicons_follow_logo(const Context& context, const std::string& logo);

} // namespace Lumenfold
