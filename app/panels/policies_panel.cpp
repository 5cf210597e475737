#include "app/panels/policies_panel.h"

#include "app/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/file_editor.h"
#include "app/editing/reload.h"
#include "app/json_view.h"
#include "app/panels/add_set_dialog.h"
#include "app/panels/dialog_frame.h"
#include "app/panels/removal.h"
#include "app/panels/set_panel.h"
#include "app/panels/site_state.h"
#include "app/panels/website_fields.h"
#include "app/shell/window_paths.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/records.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>

namespace Lumenfold {

namespace {

const std::string PANEL = Paths::SITE_CONFIGURATOR + "/Editor Panel/Panels/Policies Panel";
const std::string ADD_BUTTON = PANEL + "/Selector Row/Add Button";
const std::string REMOVE_BUTTON = PANEL + "/Selector Row/Remove Button";

const std::string DIALOG = Paths::ADD_POLICY_DIALOG;
const std::string NAME_EDITOR = DIALOG + "/Body/Name Editor";
const std::string SLUG_EDITOR = DIALOG + "/Body/Slug Editor";
const std::string TITLE_EDITOR = DIALOG + "/Body/Title Editor";
const std::string FILE_EDITOR = DIALOG + "/Body/File Row/File Editor";
const std::string BROWSE_BUTTON = DIALOG + "/Body/File Row/Browse Button";
const std::string FOOTER_CHECKBOX = DIALOG + "/Body/Footer Row/Footer Checkbox";
const std::string CREATE_BUTTON = DIALOG + "/Body/Actions/Create Button";

std::string site_folder(const AppContext& context) {
    return path_to_utf8(path_from_utf8(context.edits.path).parent_path());
}

std::string policies_folder(const AppContext& context) {
    return path_to_utf8(path_from_utf8(site_folder(context)) / "policies");
}

/// The Markdown file that a policy's "file" means; empty for an empty reference.
std::string policy_file(const AppContext& context, const std::string& reference) {
    const std::size_t start = reference.find_first_not_of('/');
    if (start == std::string::npos)
        return {};
    return path_to_utf8(path_from_utf8(site_folder(context)) /
                        path_from_utf8(reference.substr(start)));
}

std::shared_ptr<SetPanel> make_panel() {
    auto panel = std::make_shared<SetPanel>();
    panel->path = PANEL;
    panel->pointer_root = "/policies/";
    panel->label_key = "name";
    panel->numbered = "Policy ";
    panel->fields = {{"/Name Field", "name"}, {"/Title Field", "title"}, {"/File Field", "file"}};
    panel->file_key = "file";
    panel->discard_message =
        "The Policies editor has unsaved changes. Switching policies will discard them.";
    panel->editor = make_file_editor(PANEL + "/File Status Bar", PANEL + "/File Editor",
                                     "Policy file not found");
    panel->queue = queue_edit;
    panel->resolve = policy_file;
    return panel;
}

std::shared_ptr<AddSetDialog> make_dialog() {
    auto dialog = std::make_shared<AddSetDialog>();
    dialog->path = DIALOG;
    dialog->name_editor = NAME_EDITOR;
    dialog->slug_editor = SLUG_EDITOR;
    dialog->file_editor = FILE_EDITOR;
    dialog->browse_button = BROWSE_BUTTON;
    dialog->other_editors = {TITLE_EDITOR};
    dialog->file_folder = "policies/";
    dialog->pick_title = "Select a policy Markdown file";
    dialog->start_folder = policies_folder;
    dialog->base_folder = site_folder;
    return dialog;
}

/// Whether the site's footer links to the policy's page.
bool has_footer_link(const std::string& config_path, const std::string& slug) {
    const auto site = read_json_file(path_from_utf8(config_path));
    if (!site || slug.empty())
        return false;
    const Json& links = array_at(*site, "footer_links");
    return std::any_of(links.begin(), links.end(),
                       [&](const Json& link) { return text_at(link, "href") == slug + ".html"; });
}

void ask_to_remove(const Context& context) {
    const SetPanel& panel = *context->site->policies;
    const SetSelection& selection = panel.selection;
    if (context->edits.path.empty() || selection.index >= selection.count)
        return;
    const std::string name = context->app.input_value(set_field_path(panel, "name"));
    const std::string rest = has_footer_link(context->edits.path, selection.slug)
                                 ? " Its footer link goes too; the Markdown file stays on disk."
                                 : " The Markdown file stays on disk.";
    confirm_removal(context, "Remove Policy",
                    "Remove policy '" + (name.empty() ? "this policy" : name) +
                        "' from this site?" + rest,
                    [index = selection.index](const std::string& config_path) {
                        return remove_policy(path_from_utf8(config_path), index);
                    });
}

/// What the dialog holds, with the defaults of the fields left empty.
PolicyRecord read_dialog(const AppContext& context, const AddSetDialog& dialog) {
    PolicyRecord policy;
    policy.name = trimmed_value(context, NAME_EDITOR);
    policy.slug = trimmed_value(context, SLUG_EDITOR);
    policy.title = trimmed_value(context, TITLE_EDITOR);
    if (policy.title.empty()) {
        const std::string site = site_title(context);
        policy.title = site.empty() ? policy.name : site + " - " + policy.name;
    }
    policy.file = trimmed_value(context, FILE_EDITOR);
    if (policy.file.empty())
        policy.file = default_set_file(dialog, policy.slug);
    policy.skip_footer_link = !context.app.is_checked(FOOTER_CHECKBOX);
    return policy;
}

void create_policy(const Context& context, const AddSetDialog& dialog) {
    const PolicyRecord policy = read_dialog(*context, dialog);
    if (!site_is_open(*context) || policy.name.empty() || policy.slug.empty())
        return;
    flush_edits(context);
    std::string error;
    if (!add_policy(path_from_utf8(context->edits.path), policy, &error)) {
        context->message_dialog.show("Couldn't Add Policy", error);
        return;
    }
    create_markdown_file(policy_file(*context, policy.file), policy.title);
    context->app.set_visible(DIALOG, false);
    reload_after_change(context);
}

} // namespace

void fill_policies_panel(const Context& context, const Json& site) {
    fill_set_panel(context, *context->site->policies, member_at(site, "policies"));
}

void wire_policies_panel(const Context& context) {
    const std::shared_ptr<SetPanel> panel = make_panel();
    context->site->policies = panel;
    context->site_shell.guards.push_back({"Policies editor", panel->editor});
    wire_set_panel(context, panel);

    const std::shared_ptr<AddSetDialog> dialog = make_dialog();
    wire_add_set_dialog(context, dialog);
    Corvel::CorvelApp& app = context->app;
    app.on_click(ADD_BUTTON, [context, dialog] {
        if (!site_is_open(*context))
            return;
        context->app.set_checked(FOOTER_CHECKBOX, true);
        open_add_set_dialog(context, *dialog);
    });
    app.on_click(CREATE_BUTTON, [context, dialog] { create_policy(context, *dialog); });
    app.on_click(REMOVE_BUTTON, [context] { ask_to_remove(context); });
}

} // namespace Lumenfold
