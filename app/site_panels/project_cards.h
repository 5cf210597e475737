#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Publishes the cards of the registered projects, one a family, and the orphans beneath them.
void fill_project_cards(const Context& context, const Json& site);

/// Wires the actions of the cards.
void wire_project_cards(const Context& context);

} // namespace Lumenfold
