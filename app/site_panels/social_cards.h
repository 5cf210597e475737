#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Publishes the cards of the site's social links.
void fill_social_cards(const Context& context, const Json& site);

/// Wires the actions of the cards and the dialog that adds one.
void wire_social_cards(const Context& context);

} // namespace Lumenfold
