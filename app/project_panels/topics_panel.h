#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Wires the topics with their file editor and the dialog that adds one.
void wire_topics_panel(const Context& context);

/// Shows the topic selected, from the project's manifest.
void fill_topics_panel(const Context& context, const Json& project);

} // namespace Lumenfold
