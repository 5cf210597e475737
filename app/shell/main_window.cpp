#include "app/shell/main_window.h"

#include "app/app_context.h"
#include "app/shell/window_paths.h"
#include "runtime/corvel_app.h"
#include "runtime/settings/settings_menu.h"

namespace Lumenfold {

Context open_main_window(Corvel::CorvelApp& app) {
    app.set_root(Paths::ROOT);
    const auto context = std::make_shared<AppContext>(app);
    context->tabs = Corvel::install_settings_menu(app, Paths::ROOT, Paths::WINDOW_NAME, {}, {});
    // Every other dialog is hidden where it is wired.
    for (const std::string& path :
         {Paths::CONFIG_PANE, Paths::NEW_WEBSITE_DIALOG, Paths::ADD_PROJECT_DIALOG,
          Paths::ADD_TOPIC_DIALOG, Paths::ADD_DEPENDENCY_DIALOG, Paths::PROMOTE_DIALOG,
          Paths::MESSAGE_DIALOG, Paths::CONFIRM_DIALOG})
        app.set_visible(path, false);
    for (const Shell* shell : {&context->site_shell, &context->project_shell})
        app.add_state(shell->save_button, "Disabled");
    return context;
}

} // namespace Lumenfold
