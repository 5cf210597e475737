#include "app/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/panels/dialog_frame.h"
#include "app/projects/family_bar.h"
#include "app/projects/project_files.h"
#include "app/projects/project_panels.h"
#include "app/shell/leave_guard.h"
#include "app/shell/window_paths.h"
#include "runtime/corvel_app.h"
#include "site/creation.h"
#include "site/path_text.h"

namespace Lumenfold {
namespace {

const std::string DIALOG = Paths::PROMOTE_DIALOG;
const std::string MESSAGE = DIALOG + "/Body/Message";
const std::string SLUG_EDITOR = DIALOG + "/Body/Slug Editor";
const std::string LABEL_EDITOR = DIALOG + "/Body/Label Editor";
const std::string CONFIRM_BUTTON = DIALOG + "/Body/Actions/Promote Button";
constexpr const char* PROMOTE_BUTTON = "/Project Panel/Promote Button";
constexpr const char* NAME_FIELD = "/Project Panel/Project Form/Name Field";
constexpr const char* FAILURE_TITLE = "Couldn't Promote";

void open_dialog(const Context& context) {
    if (context->edits.path.empty() || context->active.members.size() != 1)
        return;
    Corvel::CorvelApp& app = context->app;
    const std::string name = app.input_value(context->project_shell.panels + NAME_FIELD);
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
    OpenConfig& active = context->active;
    active.path = path_to_utf8(family);
    active.title = read_title(family, ConfigKind::Project);
    active.members = {read_member(family, true), read_member(member, false)};
    update_active_members(context);
    // Edits that no file has taken yet are the member's, whose file is where the family's was.
    context->edits.path = active.members.back().path;
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
    if (slug.empty() || label.empty() || context->edits.path.empty())
        return;
    if (site_config_above(*context).empty()) {
        context->message_dialog.show(FAILURE_TITLE, "No .lumenfold-site found above this project.");
        return;
    }
    leave_guard(context, [slug, label](const Context& shared) { promote(shared, slug, label); });
}

} // namespace

void wire_promote_dialog(const Context& context) {
    wire_dialog_frame(context, DIALOG);
    context->app.on_click(context->project_shell.panels + PROMOTE_BUTTON,
                          [context] { open_dialog(context); });
    context->app.on_click(CONFIRM_BUTTON, [context] { confirm(context); });
}

} // namespace Lumenfold
