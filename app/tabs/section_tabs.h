#pragma once

#include "app/context/configurator.h"

#include <string>

namespace Lumenfold {

/// Shows a section of a configurator and hides the others. Unsaved text stays where it is.
void show_tab(const Context& context, Shell& configurator, const std::string& tab);

/// Wires the section tabs of a configurator and shows the first.
void wire_section_tabs(const Context& context, Shell& configurator);

} // namespace Lumenfold
