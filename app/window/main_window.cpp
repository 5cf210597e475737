#include "app/window/main_window.h"

#include "app/context/app_context.h"
#include "app/context/window_paths.h"
#include "app/editing/disk_watch.h"
#include "app/editing/kept_texts.h"
#include "app/editing/text_keeper.h"
#include "app/project_panels/family_bar.h"
#include "app/project_panels/project_configurator.h"
#include "app/site_panels/site_configurator.h"
#include "app/tabs/left_tabs.h"
#include "runtime/corvel_app.h"
#include "screens/settings_menu.h"

namespace Lumenfold {

namespace {

void show_names_anew(const Context& context) {
    refresh_names(context);
    if (active_config(*context).kind == ConfigKind::Project)
        build_family_tabs(context);
}

} // namespace

Context open_main_window(Corvel::CorvelApp& app) {
    app.set_root(Paths::ROOT);
    const auto context =
        std::make_shared<AppContext>(app, site_configurator_parts(), project_configurator_parts());
    context->tabs = Corvel::install_settings_menu(app, Paths::ROOT, Paths::WINDOW_NAME, {}, {});
    drop_old_texts(kept_folder(*context));
    context->names_changed = show_names_anew;
    app.on_activate = [context] { compare_shown_with_disk(context); };
    app.set_visible(Paths::CONFIG_PANE, false);
    return context;
}

} // namespace Lumenfold
