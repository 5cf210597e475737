#include "app/panels/logo_picker.h"

#include "app/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/json_view.h"
#include "app/later.h"
#include "app/panels/favicon_picker.h"
#include "app/panels/image_import.h"
#include "app/panels/site_state.h"
#include "app/panels/tab_preview.h"
#include "app/shell/tabs.h"
#include "app/shell/window_paths.h"
#include "runtime/corvel_app.h"
#include "site/config_files.h"
#include "site/path_text.h"

#include <optional>

namespace Lumenfold {

namespace {

const std::string PICKER =
    Paths::SITE_CONFIGURATOR + "/Editor Panel/Panels/Website Panel/Logo Picker";
const std::string LOGO_IMAGE = PICKER + "/Avatar/Logo Image";
const std::string PLACEHOLDER = PICKER + "/Avatar/Placeholder";
const std::string BROWSE_BUTTON = PICKER + "/Controls Row/Browse Button";

void show_logo(const Context& context, const std::string& logo) {
    context->app.set_visible(LOGO_IMAGE, !logo.empty());
    context->app.set_visible(PLACEHOLDER, logo.empty());
    context->app.set_source(LOGO_IMAGE, logo);
}

/// An image shown under its old name is not read again: it is taken away for one render.
void show_logo_again(const Context& context, const std::string& logo) {
    context->app.set_source(LOGO_IMAGE, "");
    clear_tab_preview_logo(context);
    run_later(context, REREAD_DELAY_MS, [context, logo] {
        show_logo(context, logo);
        update_tab_preview(context);
    });
}

void use_logo(const Context& context, const std::filesystem::path& file) {
    const std::optional<ImportedImage> image = import_image(image_root(*context), file);
    if (!image)
        return;
    std::string& logo = context->site->preview.logo_path;
    const bool reread = logo == image->path;
    logo = image->path;
    queue_edit(context, "/branding/logo_path", image->reference);
    show_logo(context, logo);
    update_tab_preview(context);
    if (reread && context->app.run_after)
        show_logo_again(context, logo);
    set_tab_logo(context, logo, reread);
    favicons_follow_logo(context, logo);
}

} // namespace

void fill_logo_picker(const Context& context, const Json& site) {
    const std::string logo = path_to_utf8(
        resolve_image(image_root(*context), text_at(member_at(site, "branding"), "logo_path")));
    context->site->preview.logo_path = logo;
    show_logo(context, logo);
}

void wire_logo_picker(const Context& context) {
    context->app.on_click(BROWSE_BUTTON, [context] {
        pick_image(context, "Select a logo image (copied into your site)", IMAGE_FILTER,
                   [context](const std::filesystem::path& file) { use_logo(context, file); });
    });
}

} // namespace Lumenfold
