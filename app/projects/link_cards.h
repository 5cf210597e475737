#pragma once

#include "app/shell.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Wires the cards of the dependencies and of the downloads with the dialogs that add them.
void wire_link_cards(const Context& context);

/// Publishes both from the configuration.
void fill_link_cards(const Context& context, const Json& project);

} // namespace Lumenfold
