#pragma once

#include "app/shell.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Wires the topics with their file editor and the dialog that adds one.
void wire_topics_panel(const Context& context);

/// Shows the topic selected, from the manifest's "build".
void fill_topics_panel(const Context& context, const Json& build);

/// Loads the file that the topic's source field names now.
void reload_topic_file(const Context& context);

} // namespace Lumenfold
