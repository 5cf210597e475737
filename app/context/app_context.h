#pragma once

#include "app/context/build_state.h"
#include "app/context/configurator.h"
#include "app/context/confirm_dialog.h"
#include "app/context/edit_state.h"
#include "app/context/message_dialog.h"
#include "app/context/open_config.h"
#include "app/context/project_state.h"
#include "app/context/site_state.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Corvel {
class CorvelApp;
class WindowTabs;
} // namespace Corvel

namespace Lumenfold {

/// All that the handlers of the application share. `build_app` makes one; handlers registered with
/// the application object hold it by `Context`. What is stored inside it (the action of the confirm
/// dialog, the reload of a configurator) receives the context as an argument and must not capture
/// it: the record would own itself.
struct AppContext {
    AppContext(Corvel::CorvelApp& application, ConfiguratorParts site_parts,
               ConfiguratorParts project_parts);
    AppContext(const AppContext&) = delete;
    AppContext& operator=(const AppContext&) = delete;

    Corvel::CorvelApp& app;
    std::shared_ptr<Corvel::WindowTabs> tabs; ///< of the title bar; set by `open_main_window`

    std::vector<OpenConfig> open_configs; ///< the open tabs, in the order of opening
    std::uint32_t next_config_number = 1; ///< of the next tab id
    std::string active_id;         ///< of the configuration that the panels show; may be empty
    std::size_t active_member = 0; ///< of its members: the one whose panels are shown

    Shell site_configurator;
    Shell project_configurator;
    Shell* configurator = nullptr; ///< of the active configuration; null until the first is loaded

    EditState edits;
    /// Shows names, logos and members anew after a file was written that may hold them.
    void (*names_changed)(const Context& context) = nullptr;
    MessageDialog message_dialog;
    ConfirmDialog confirm_dialog;

    SiteState site;       ///< of the site's panels
    ProjectState project; ///< of the project's panels
    BuildState build;     ///< of both build panels
};

/// The open configuration `id`; null if there is none. Valid until a tab is opened or closed.
OpenConfig* find_config(AppContext& context, const std::string& id);

/// The configuration that the panels show; an empty one while nothing is open. Valid until a tab is
/// opened or closed.
const OpenConfig& active_config(const AppContext& context);

/// The active configuration is a site.
bool site_is_open(const AppContext& context);

/// There is an active configuration.
bool anything_is_open(const AppContext& context);

} // namespace Lumenfold
