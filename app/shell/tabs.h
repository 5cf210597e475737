#pragma once

#include "app/shell.h"

#include <string>

namespace Lumenfold {

/// Node path of the title bar's tab of the configuration `id`.
std::string left_tab_path(const std::string& id);

/// Publishes the tabs of the open configurations.
void refresh_left_tabs(const Context& context);

/// Gives the active configuration's tab another logo. With `reread` the same file has new content.
void set_tab_logo(const Context& context, const std::string& logo, bool reread);

/// Wires the tabs of the open configurations.
void wire_left_tabs(const Context& context);

/// Shows a section of a configurator and hides the others. Unsaved text stays where it is.
void show_tab(const Context& context, Shell& shell, const std::string& tab);

/// Wires the section tabs of a configurator and shows the first.
void wire_section_tabs(const Context& context, Shell& shell);

} // namespace Lumenfold
