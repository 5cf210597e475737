#pragma once

#include "app/context/context.h"
#include "site/json_file.h"

namespace Lumenfold {

/// Wires the removal of facts and the dialog that adds one.
void wire_facts(const Context& context);

/// Notes the newest version built, which derived facts show.
void find_latest_version(const Context& context, const Json& project);

/// Shows the newest version built in the facts that follow it.
void refresh_derived_facts(const Context& context);

/// Publishes the facts of the configuration, a derived one locked.
void fill_facts(const Context& context, const Json& project);

} // namespace Lumenfold
