#include "app/site_panels/policies_panel.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/context/window_paths.h"
#include "app/editing/edit_queue.h"
#include "app/forms/set_panel.h"
#include "app/site_panels/website_fields.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/records.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>

namespace Lumenfold {

namespace {

const std::string PANEL = Paths::SITE_CONFIGURATOR + "/Editor Panel/Panels/Policies Panel";
const std::string DIALOG = Paths::ADD_POLICY_DIALOG;
const std::string FOOTER_CHECKBOX = DIALOG + "/Body/Footer Row/Footer Checkbox";

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

/// Whether the site's footer links to the policy's page.
bool has_footer_link(const std::string& config_path, const std::string& slug) {
    const auto site = read_json_file(path_from_utf8(config_path));
    if (!site || slug.empty())
        return false;
    const Json& links = array_at(*site, "footer_links");
    return std::any_of(links.begin(), links.end(),
                       [&](const Json& link) { return text_at(link, "href") == slug + ".html"; });
}

std::string default_title(const AppContext& context, const std::string& name) {
    const std::string site = site_title(context);
    return site.empty() ? name : site + " - " + name;
}

bool add(const AppContext& context, const SetEntry& entry, std::string* error) {
    return add_policy(path_from_utf8(context.edits.path),
                      {.slug = entry.slug,
                       .name = entry.name,
                       .title = entry.title,
                       .file = entry.file,
                       .skip_footer_link = !context.app.is_checked(FOOTER_CHECKBOX)},
                      error);
}

std::string removal_question(const AppContext& context) {
    const std::string name = context.app.input_value(PANEL + "/Meta Form/Name Field");
    const std::string rest = has_footer_link(context.edits.path, context.site.policies.slug)
                                 ? " Its footer link goes too; the Markdown file stays on disk."
                                 : " The Markdown file stays on disk.";
    return "Remove policy '" + (name.empty() ? "this policy" : name) + "' from this site?" + rest;
}

const SetPanel POLICIES{
    .path = PANEL,
    .pointer_root = "/policies/",
    .label_key = "name",
    .numbered = "Policy ",
    .fields = {{"/Name Field", "name"}, {"/Title Field", "title"}, {"/File Field", "file"}},
    .file_key = "file",
    .missing_text = "Policy file not found",
    .discard_message =
        "The Policies editor has unsaved changes. Switching policies will discard them.",
    .removal_title = "Remove Policy",
    .dialog = {.path = DIALOG,
               .open_button = PANEL + "/Selector Row/Add Button",
               .name_editor = DIALOG + "/Body/Name Editor",
               .slug_editor = DIALOG + "/Body/Slug Editor",
               .title_editor = DIALOG + "/Body/Title Editor",
               .file_editor = DIALOG + "/Body/File Row/File Editor",
               .browse_button = DIALOG + "/Body/File Row/Browse Button",
               .other_editors = {},
               .checkbox = FOOTER_CHECKBOX,
               .file_folder = "policies/",
               .import_folder = "policies",
               .pick_title = "Select a policy Markdown file",
               .failure_title = "Couldn't Add Policy",
               .available = site_is_open,
               .start_folder = policies_folder,
               .base_folder = site_folder,
               .default_title = default_title,
               .add = add,
               .resolve = policy_file},
    .state = [](AppContext& context) -> SetState& { return context.site.policies; },
    .queue = queue_edit,
    .removal_question = removal_question,
    .remove =
        [](const AppContext& context, const ShownRecord& shown) {
            return remove_policy(path_from_utf8(context.edits.path), shown);
        },
};

} // namespace

void fill_policies_panel(const Context& context, const Json& site) {
    fill_set_panel(context, POLICIES, member_at(site, "policies"));
}

void wire_policies_panel(const Context& context) {
    wire_set_panel(context, POLICIES);
}

} // namespace Lumenfold
