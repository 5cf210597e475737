#include "app/project_panels/promote_dialog.h"

#include "app/context/app_context.h"
#include "app/context/window_paths.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/forms/dialog_frame.h"
#include "app/project_panels/family_bar.h"
#include "app/project_panels/project_files.h"
#include "app/tabs/leave_guard.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/promotion.h"

namespace Lumenfold {
namespace {

const std::string DIALOG = Paths::PROMOTE_DIALOG;
const std::string MESSAGE = DIALOG + "/Body/Message";
const std::string SLUG_EDITOR = DIALOG + "/Body/Slug Editor";
const std::string LABEL_EDITOR = DIALOG + "/Body/Label Editor";
const std::string CONFIRM_BUTTON = DIALOG + "/Body/Actions/Promote Button";
constexpr const char* FAMILY_LABEL = "/Project Panel/Family Label";
constexpr const char* PROMOTE_BUTTON = "/Project Panel/Promote Button";
constexpr const char* NAME_FIELD = "/Project Panel/Project Form/Name Field";
constexpr const char* FAILURE_TITLE = "Couldn't Promote";

void open_dialog(const Context& context) {
    if (!anything_is_open(*context) || active_config(*context).members.size() != 1)
        return;
    Corvel::CorvelApp& app = context->app;
    const std::string name = app.input_value(context->project_configurator.panels + NAME_FIELD);
    app.set_text(MESSAGE, "\"" + name +
                              "\" becomes a project family: a family overview keeps its name and "
                              "slug, and this project becomes the family's first member under a "
                              "new slug (its pages move under the family's).");
    fill_editor(app, SLUG_EDITOR, "");
    fill_editor(app, LABEL_EDITOR, "");
    app.set_visible(DIALOG, true);
}

/// Makes the active configuration the family that its project became.
void show_family(const Context& context, const std::filesystem::path& family,
                 const std::filesystem::path& member) {
    OpenConfig& active = *find_config(*context, context->active_id);
    active.path = path_to_utf8(family);
    active.title = read_title(family, ConfigKind::Project);
    active.from_registry = true;
    active.members = {read_member(family, true), read_member(member, false)};
    // Edits that no file has taken yet are the member's, whose file is where the family's was.
    context->edits.path = active.members.back().path;
    update_active_members(context);
    show_member(context, 0);
}

void promote(const Context& context, const std::string& slug, const std::string& label) {
    context->app.set_visible(DIALOG, false);
    flush_edits(context);
    std::filesystem::path family;
    std::filesystem::path member;
    std::string error;
    if (promote_to_family(site_config_above(*context), path_from_utf8(context->edits.path), slug,
                          label, &family, &member, &error))
        show_family(context, family, member);
    else
        context->message_dialog.show(FAILURE_TITLE, error);
}

void confirm(const Context& context) {
    const std::string slug = trimmed_value(*context, SLUG_EDITOR);
    const std::string label = trimmed_value(*context, LABEL_EDITOR);
    if (slug.empty() || label.empty() || !anything_is_open(*context))
        return;
    if (site_config_above(*context).empty()) {
        context->message_dialog.show(FAILURE_TITLE, "No .lumenfold-site found above this project.");
        return;
    }
    leave_guard(context, [slug, label](const Context& shared) { promote(shared, slug, label); });
}

} // namespace

void offer_promotion(const Context& context) {
    const std::string& panels = context->project_configurator.panels;
    const bool offered =
        active_config(*context).members.size() == 1 && !site_config_above(*context).empty();
    context->app.set_visible(panels + FAMILY_LABEL, offered);
    context->app.set_visible(panels + PROMOTE_BUTTON, offered);
}

void wire_promote_dialog(const Context& context) {
    wire_dialog_frame(context, DIALOG);
    context->app.on_click(context->project_configurator.panels + PROMOTE_BUTTON,
                          [context] { open_dialog(context); });
    context->app.on_click(CONFIRM_BUTTON, [context] { confirm(context); });
}

} // namespace Lumenfold
