#include "app/project_panels/project_form.h"

#include "app/context/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/forms/form_fields.h"
#include "app/forms/image_import.h"
#include "app/project_panels/family_bar.h"
#include "app/project_panels/project_files.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {
namespace {

constexpr FormField FIELDS[] = {
    {"/Project Panel/Project Form/Slug Field", "/slug"},
    {"/Project Panel/Project Form/Name Field", "/name"},
    {"/Project Panel/Project Form/Tagline Field", "/tagline"},
};
constexpr const char* LOGO_IMAGE = "/Project Panel/Logo Picker/Avatar/Logo Image";
constexpr const char* LOGO_PLACEHOLDER = "/Project Panel/Logo Picker/Avatar/Placeholder";
constexpr const char* LOGO_BROWSE_BUTTON = "/Project Panel/Logo Picker/Controls Row/Browse Button";

void show_logo(const Context& context, const std::string& file) {
    const std::string& panels = context->project_configurator.panels;
    context->app.set_visible(panels + LOGO_IMAGE, !file.empty());
    context->app.set_visible(panels + LOGO_PLACEHOLDER, file.empty());
    context->app.set_source(panels + LOGO_IMAGE, file);
}

void use_logo(const Context& context, const std::filesystem::path& file) {
    const std::optional<ImportedImage> image = import_image(context, file);
    if (!image)
        return;
    queue_edit(context, "/logo", image->reference);
    show_logo(context, image->path);
    set_member_logo(context, image->path);
}

} // namespace

void wire_project_form(const Context& context) {
    const std::string& panels = context->project_configurator.panels;
    wire_form_fields(context, panels, FIELDS);
    context->app.on_click(panels + LOGO_BROWSE_BUTTON, [context] {
        pick_image(context, "Select a logo image (copied into your site)", IMAGE_FILTER,
                   [context](const std::filesystem::path& file) { use_logo(context, file); });
    });
}

void fill_project_form(const Context& context, const Json& project) {
    fill_form_fields(context, context->project_configurator.panels, FIELDS, project);
    show_logo(context, path_to_utf8(resolve_project_logo(member_folder(*context),
                                                         text_at(project, "logo"))));
}

} // namespace Lumenfold
