#pragma once

#include "app/edit_state.h"
#include "app/shell.h"
#include "app/shell/confirm_dialog.h"
#include "app/shell/message_dialog.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace Corvel {
class CorvelApp;
class WindowTabs;
} // namespace Corvel

namespace Lumenfold {

struct SiteState;
struct ProjectState;
struct BuildState;

/// All that the handlers of the application share. `build_app` makes one; handlers registered with
/// the application object hold it by `Context`. What is stored inside it (the action of the confirm
/// dialog, the reload of a shell) receives the context as an argument and must not capture it: the
/// record would own itself.
struct AppContext {
    explicit AppContext(Corvel::CorvelApp& application);

    Corvel::CorvelApp& app;
    std::shared_ptr<Corvel::WindowTabs> tabs; ///< of the title bar; set by `build_app`

    /// The open tabs, in the order of opening. Written by the functions of app/shell/opening.h.
    std::vector<OpenConfig> open_configs;
    std::uint32_t next_config_number = 1; ///< of the next tab id; never used again
    OpenConfig active;                    ///< `id` is empty while nothing is open

    Shell site_shell;
    Shell project_shell;
    Shell* shell = nullptr; ///< of the active configuration; null until the first is loaded

    EditState edits;
    MessageDialog message_dialog;
    ConfirmDialog confirm_dialog;

    std::shared_ptr<SiteState> site;       ///< of the site's panels; made while they are wired
    std::shared_ptr<ProjectState> project; ///< of the project's panels; made while they are wired
    std::shared_ptr<BuildState> build;     ///< of both build panels; made while they are wired
};

/// The active configuration is a site.
bool site_is_open(const AppContext& context);

/// The record of the active configuration's tab; null while nothing is open. Valid until a tab is
/// opened or closed.
OpenConfig* active_tab_record(AppContext& context);

} // namespace Lumenfold
