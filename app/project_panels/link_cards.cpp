#include "app/project_panels/link_cards.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/context/project_state.h"
#include "app/context/window_paths.h"
#include "app/forms/add_dialog.h"
#include "app/forms/image_import.h"
#include "app/forms/removal.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/records.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {
namespace {

/// What tells the cards of dependencies and of downloads apart.
struct CardKind {
    const char* panel;
    const char* list;
    const char* row_prefix;
    const char* key;      ///< of the array in the configuration
    const char* name_key; ///< of an element's name
    const char* icon_key;
    const char* name_field; ///< of a row
    bool has_size;
    std::vector<DepRow> ProjectState::*rows;
    std::string (*removal_message)(const std::string& name);
    const char* removal_title;
};

const CardKind DEPENDENCIES{"/Dependencies Panel",
                            "depCards",
                            "dep-",
                            "requires",
                            "name",
                            "icon",
                            "name",
                            false,
                            &ProjectState::dependencies,
                            [](const std::string& name) {
                                return "Remove dependency '" +
                                       (name.empty() ? "this dependency" : name) + "'?";
                            },
                            "Remove Dependency"};

const CardKind DOWNLOADS{"/Downloads Panel",
                         "downloadCards",
                         "download-",
                         "downloads",
                         "platform_label",
                         "platform_icon",
                         "label",
                         true,
                         &ProjectState::downloads,
                         [](const std::string& name) {
                             return "Remove the " + (name.empty() ? "this download" : name) +
                                    " download? The file itself (if any) stays where it is.";
                         },
                         "Remove Download"};

constexpr const char* DEP_CARDS = "/Dependencies Panel/Dep Cards";

Corvel::ListEntry make_row(const CardKind& kind, std::size_t position, const Json& element,
                           const std::filesystem::path& root) {
    Corvel::ListEntry row{kind.row_prefix + std::to_string(position),
                          {{kind.name_field, text_at(element, kind.name_key)}}};
    const std::string icon = path_to_utf8(resolve_image(root, text_at(element, kind.icon_key)));
    const std::string size = kind.has_size ? text_at(element, "size") : std::string();
    for (const auto& [field, value] : {std::pair("url", text_at(element, "url")),
                                       std::pair("size", size), std::pair("icon", icon)})
        if (!value.empty())
            row.fields[field] = value;
    return row;
}

void fill_cards(const Context& context, const CardKind& kind, const Json& project) {
    std::vector<DepRow>& targets = context->project.*kind.rows;
    targets.clear();
    const std::filesystem::path root = image_root(*context);
    std::vector<Corvel::ListEntry> rows;
    for (const Json& element : array_at(project, kind.key)) {
        rows.push_back(make_row(kind, rows.size(), element, root));
        targets.push_back({text_at(element, kind.name_key), text_at(element, "url"),
                           flag_at(element, "external")});
    }
    context->app.set_state(context->project_configurator.panels + kind.panel, "Empty",
                           rows.empty());
    context->app.set_rows(kind.list, std::move(rows));
}

void act_on_card(const Context& context, const CardKind& kind, const std::string& item,
                 const std::string& action) {
    const std::vector<DepRow>& targets = context->project.*kind.rows;
    const long position = row_position(item, kind.row_prefix);
    if (position < 0 || static_cast<std::size_t>(position) >= targets.size())
        return;
    const auto index = static_cast<std::size_t>(position);
    const DepRow& target = targets[index];
    if (action == "activate") {
        if (context->app.open_url && target.url.find("://") != std::string::npos)
            context->app.open_url(target.url);
    } else if (action == "remove") {
        const ShownRecord shown{index, {{kind.name_key, target.name}, {"url", target.url}}};
        confirm_removal(context, kind.removal_title, kind.removal_message(target.name),
                        [key = kind.key, shown](const Context& later) {
                            return remove_record(path_from_utf8(later->edits.path), key, shown);
                        });
    }
}

AddDialog dependency_dialog(const std::string& panels) {
    AddDialog dialog;
    dialog.path = Paths::ADD_DEPENDENCY_DIALOG;
    dialog.open_button = panels + "/Dependencies Panel/Add Dependency Button";
    dialog.editors = {"/Body/Name Editor", "/Body/URL Editor"};
    dialog.required = {0, 1};
    dialog.icon_title = "Select a dependency icon (copied into your site)";
    dialog.has_external = true;
    dialog.failure_title = "Couldn't Add Dependency";
    dialog.available = anything_is_open;
    dialog.add = [](const std::string& config_path, const AddDialogValues& values,
                    std::string* error) {
        return add_dependency(path_from_utf8(config_path),
                              {values.texts[0], values.texts[1], values.icon, values.external},
                              error);
    };
    return dialog;
}

AddDialog download_dialog(const std::string& panels) {
    AddDialog dialog;
    dialog.path = Paths::ADD_DOWNLOAD_DIALOG;
    dialog.open_button = panels + "/Downloads Panel/Add Download Button";
    dialog.editors = {"/Body/URL Editor", "/Body/Platform Editor", "/Body/Size Editor"};
    dialog.required = {0, 1};
    dialog.icon_title = "Select a platform icon (copied into your site)";
    dialog.failure_title = "Couldn't Add Download";
    dialog.available = anything_is_open;
    dialog.add = [](const std::string& config_path, const AddDialogValues& values,
                    std::string* error) {
        return add_download(path_from_utf8(config_path),
                            {values.texts[0], values.icon, values.texts[1], values.texts[2]},
                            error);
    };
    return dialog;
}

void wire_cards(const Context& context, const CardKind& kind) {
    context->app.on_row_click(
        kind.list,
        [context, &kind](const std::string&, const std::string& item, const std::string& action) {
            act_on_card(context, kind, item, action);
        });
}

} // namespace

void wire_dependencies(const Context& context) {
    wire_add_dialog(context, dependency_dialog(context->project_configurator.panels));
    wire_cards(context, DEPENDENCIES);
}

void wire_downloads(const Context& context) {
    wire_add_dialog(context, download_dialog(context->project_configurator.panels));
    wire_cards(context, DOWNLOADS);
}

void fill_dependencies(const Context& context, const Json& project) {
    fill_cards(context, DEPENDENCIES, project);
    const std::vector<DepRow>& dependencies = context->project.dependencies;
    for (std::size_t i = 0; i < dependencies.size(); ++i)
        context->app.set_visible(context->project_configurator.panels + DEP_CARDS + "/" +
                                     DEPENDENCIES.row_prefix + std::to_string(i) + "/External",
                                 dependencies[i].external);
}

void fill_downloads(const Context& context, const Json& project) {
    fill_cards(context, DOWNLOADS, project);
}

} // namespace Lumenfold
