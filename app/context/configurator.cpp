#include "app/context/configurator.h"

#include <utility>

namespace Lumenfold {

Shell::Shell(ConfiguratorParts parts)
    : ConfiguratorParts(std::move(parts))
    , editor_panel(root + "/Editor Panel")
    , sidebar(editor_panel + "/Sidebar")
    , panels(editor_panel + "/Panels")
    , text_panel(root + "/Text Panel")
    , text_editor(text_panel + "/Text Editor")
    , status_bar(text_panel + "/Status Bar")
    , status_message(status_bar + "/Status Message")
    , save_button(status_bar + "/Save Button") {}

} // namespace Lumenfold
