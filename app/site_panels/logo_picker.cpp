#include "app/site_panels/logo_picker.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/context/window_paths.h"
#include "app/editing/edit_queue.h"
#include "app/forms/image_import.h"
#include "app/site_panels/favicon_picker.h"
#include "app/site_panels/tab_preview.h"
#include "app/tabs/left_tabs.h"
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

void use_logo(const Context& context, const std::filesystem::path& file) {
    const std::optional<ImportedImage> image = import_image(context, file);
    if (!image)
        return;
    std::string& logo = context->site.preview.logo_path;
    logo = image->path;
    queue_edit(context, "/branding/logo_path", image->reference);
    show_logo(context, logo);
    update_tab_preview(context);
    set_tab_logo(context, logo);
    favicons_follow_logo(context, logo);
}

} // namespace

void fill_logo_picker(const Context& context, const Json& site) {
    const std::string logo = path_to_utf8(
        resolve_image(image_root(*context), text_at(member_at(site, "branding"), "logo_path")));
    context->site.preview.logo_path = logo;
    show_logo(context, logo);
}

void wire_logo_picker(const Context& context) {
    context->app.on_click(BROWSE_BUTTON, [context] {
        pick_image(context, "Select a logo image (copied into your site)", IMAGE_FILTER,
                   [context](const std::filesystem::path& file) { use_logo(context, file); });
    });
}

} // namespace Lumenfold
