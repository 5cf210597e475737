#pragma once

#include "app/context/context.h"

#include <string>

namespace Lumenfold {

/// Node path of the title bar's tab of the configuration `id`.
std::string left_tab_path(const std::string& id);

/// Publishes the tabs of the open configurations.
void refresh_left_tabs(const Context& context);

/// Reads the titles, logos and members of the open configurations from their files again.
void refresh_names(const Context& context);

/// Gives the active configuration's tab another logo.
void set_tab_logo(const Context& context, const std::string& logo);

/// Wires the tabs of the open configurations.
void wire_left_tabs(const Context& context);

} // namespace Lumenfold
