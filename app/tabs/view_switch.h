#pragma once

#include "app/context/configurator.h"

#include <string>

namespace Lumenfold {

/// Shows the form ("editor") or the text view ("text") of a configurator.
void set_view(const Context& context, Shell& configurator, const std::string& view);

/// Wires the two view tabs of a configurator, which ask before unsaved text is given up.
void wire_view_tabs(const Context& context, Shell& configurator);

} // namespace Lumenfold
