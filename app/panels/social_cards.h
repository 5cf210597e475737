#pragma once

#include "app/shell.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Publishes the cards of the site's social links.
void fill_social_cards(const Context& context, const Json& site);

/// Wires the actions of the cards.
void wire_social_cards(const Context& context);
void wire_add_social_dialog(const Context& context);

} // namespace Lumenfold
