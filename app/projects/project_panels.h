#pragma once

#include "app/shell.h"

#include <cstddef>

namespace Lumenfold {

/// Wires the panels of the project configurator, its file editors in the order README, License,
/// Topics, and its reload.
void wire_project_panels(const Context& context);

/// Refills the project configurator for one member of `config`; past the end it is the last.
void fill_project_panels(const Context& context, const OpenConfig& config, std::size_t member);

/// Wires the dialogs that make a project or family member, and a family.
void wire_add_project_dialog(const Context& context);
void wire_promote_dialog(const Context& context);

} // namespace Lumenfold
