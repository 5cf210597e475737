#pragma once

#include "screens/window_tabs.h"

namespace Corvel {

/// (tab name, panel name)
using TabNames = std::vector<std::pair<std::string, std::string>>;

/// Wires the framework's settings screen, its dialogs and the title bar's tabs for the root layer
/// `root` and its window `window`. Returns the tabs of the title bar, with the application pane
/// selected.
std::shared_ptr<WindowTabs> install_settings_menu(CorvelApp& app, const std::string& root,
                                                  const std::string& window,
                                                  const TabNames& extra_menu_tabs,
                                                  const TabNames& extra_window_tabs);

} // namespace Corvel
