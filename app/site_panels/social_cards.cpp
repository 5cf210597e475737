#include "app/site_panels/social_cards.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/context/window_paths.h"
#include "app/forms/add_dialog.h"
#include "app/forms/image_import.h"
#include "app/forms/removal.h"
#include "runtime/corvel_app.h"
#include "site/config_files.h"
#include "site/path_text.h"
#include "site/records.h"

#include <nlohmann/json.hpp>

#include <utility>
#include <vector>

namespace Lumenfold {

namespace {

const std::string CARDS_LIST = "socialCards";
const std::string PANEL = Paths::SITE_CONFIGURATOR + "/Editor Panel/Panels/Socials Panel";
const std::string CARDS = PANEL + "/Social Cards";
const std::string ADD_BUTTON = PANEL + "/Add Social Button";
const std::string ROW_PREFIX = "social-";

Corvel::ListEntry make_row(const std::string& id, const Json& social,
                           const std::filesystem::path& root) {
    const std::string label = text_at(social, "label");
    const std::string username = text_at(social, "username");
    Corvel::ListEntry row{id, {{"title", label.empty() ? username : label}}};
    if (!username.empty() && username != label)
        row.fields["username"] = username;
    const std::filesystem::path icon = resolve_image(root, text_at(social, "icon"));
    if (!icon.empty())
        row.fields["icon"] = path_to_utf8(icon);
    return row;
}

void open_link(const Context& context, const std::string& url) {
    if (!url.empty() && context->app.open_url)
        context->app.open_url(url);
}

void ask_to_remove(const Context& context, const SocialTarget& target, std::size_t position) {
    const std::string& label = target.label;
    const ShownRecord shown{position, {{"label", label}, {"url", target.url}}};
    confirm_removal(context, "Remove Social Link",
                    "Remove '" + (label.empty() ? "this link" : label) + "' from this site?",
                    [shown](const Context& later) {
                        return remove_record(path_from_utf8(later->edits.path), "socials", shown);
                    });
}

bool add_record(const std::string& config_path, const AddDialogValues& values, std::string* error) {
    return add_social(path_from_utf8(config_path),
                      {.label = values.texts[0],
                       .username = values.texts[1],
                       .url = values.texts[2],
                       .icon = values.icon,
                       .external = values.external},
                      error);
}

} // namespace

void fill_social_cards(const Context& context, const Json& site) {
    const std::filesystem::path root = image_root(*context);
    auto& targets = context->site.cards.socials;
    targets.clear();
    std::vector<Corvel::ListEntry> rows;
    for (const Json& social : array_at(site, "socials")) {
        const std::string id = ROW_PREFIX + std::to_string(rows.size());
        targets[id] = {text_at(social, "url"), text_at(social, "label"),
                       flag_at(social, "external")};
        rows.push_back(make_row(id, social, root));
    }
    context->app.set_state(PANEL, "Empty", rows.empty());
    context->app.set_rows(CARDS_LIST, std::move(rows));
    // A row's state belongs to its position, so every row is told, whatever it showed before.
    for (const auto& [id, target] : targets)
        context->app.set_visible(CARDS + "/" + id + "/External", target.external);
}

void wire_social_cards(const Context& context) {
    wire_add_dialog(context,
                    {.path = Paths::ADD_SOCIAL_DIALOG,
                     .open_button = ADD_BUTTON,
                     .editors = {"/Body/Label Editor", "/Body/Username Editor", "/Body/URL Editor"},
                     .required = {0, 2},
                     .icon_title = "Select a social icon (copied into your site)",
                     .has_external = true,
                     .failure_title = "Couldn't Add Social Link",
                     .available = site_is_open,
                     .add = add_record});
    context->app.on_row_click(CARDS_LIST, [context](const std::string&, const std::string& id,
                                                    const std::string& action) {
        const auto found = context->site.cards.socials.find(id);
        const long position = row_position(id, ROW_PREFIX);
        if (found == context->site.cards.socials.end() || position < 0)
            return;
        if (action == "activate")
            open_link(context, found->second.url);
        else if (action == "remove")
            ask_to_remove(context, found->second, static_cast<std::size_t>(position));
    });
}

} // namespace Lumenfold
