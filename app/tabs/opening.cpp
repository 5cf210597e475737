#include "app/tabs/opening.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/context/window_paths.h"
#include "app/editing/edit_queue.h"
#include "app/editing/file_editor.h"
#include "app/editing/text_keeper.h"
#include "app/editing/text_view.h"
#include "app/tabs/leave_guard.h"
#include "app/tabs/left_tabs.h"
#include "app/tabs/section_tabs.h"
#include "app/tabs/view_switch.h"
#include "runtime/corvel_app.h"
#include "screens/window_tabs.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <utility>

namespace Lumenfold {

namespace {

constexpr const char* UNSUPPORTED = "Unsupported Config";

/// One spelling for every way to a file; a path that the file system does not know stays.
std::string canonical_text(const std::string& path) {
    std::error_code error;
    const std::filesystem::path canonical = std::filesystem::canonical(path_from_utf8(path), error);
    return error ? path : path_to_utf8(canonical);
}

std::vector<OpenConfig>::iterator find_open(AppContext& context, const std::string& path) {
    return std::find_if(context.open_configs.begin(), context.open_configs.end(),
                        [&](const OpenConfig& config) { return config.path == path; });
}

/// The continuation of `open_tab`, with nothing unsaved left to lose.
void show_config(const Context& context, OpenConfig config) {
    if (const auto found = find_open(*context, config.path); found != context->open_configs.end()) {
        // A card knows more of a project than the file by which it was opened.
        const std::string id = found->id;
        if (config.from_registry) {
            *found = std::move(config);
            found->id = id;
            refresh_left_tabs(context);
        }
        load_config(context, id);
        context->tabs->select(left_tab_path(id));
        return;
    }
    config.id = "config-" + std::to_string(context->next_config_number++);
    const std::string id = config.id;
    const std::string tab = left_tab_path(id);
    context->open_configs.push_back(std::move(config));
    refresh_left_tabs(context);
    load_config(context, id);
    context->tabs->add(tab, Paths::CONFIG_PANE, "Active");
    context->tabs->select(tab);
}

/// Forgets the active configuration with everything typed into its editors.
void clear_active(const Context& context) {
    keep_now(*context, context->configurator->keeper);
    flush_edits(context);
    stop_editing(context);
    context->active_id.clear();
    // Left as they are, they would hold back the next configuration with a question about this one.
    for (const Guard& guard : context->configurator->guards)
        empty_file_editor(context, guard.editor(*context));
}

} // namespace

void open_config(const Context& context, const std::string& path) {
    OpenConfig config;
    config.path = canonical_text(path);
    const std::filesystem::path file = path_from_utf8(config.path);
    config.kind = classify_config(file);
    if (config.kind != ConfigKind::Site && config.kind != ConfigKind::Project) {
        context->message_dialog.show(UNSUPPORTED,
                                     "This file isn't a site or project configuration.");
        return;
    }
    std::string reason;
    if (!check_format(file, &reason)) {
        context->message_dialog.show(UNSUPPORTED,
                                     path_to_utf8(file.filename()) + " " + reason + ".");
        return;
    }
    config.title = read_title(file, config.kind);
    if (config.kind == ConfigKind::Site)
        config.logo = read_site_logo(file);
    else
        config.members = {read_member(file, false)};
    if (config.kind == ConfigKind::Project)
        config.logo = members_logo(config.members);
    open_tab(context, std::move(config));
}

void open_project_card(const Context& context, const std::string& path, const std::string& title,
                       std::vector<Member> members) {
    if (members.empty())
        return;
    OpenConfig config;
    config.path = canonical_text(path);
    config.kind = ConfigKind::Project;
    config.title = title.empty() ? "Project" : title;
    config.from_registry = true;
    config.members = std::move(members);
    config.logo = members_logo(config.members);
    open_tab(context, std::move(config));
}

void open_tab(const Context& context, OpenConfig config) {
    if (!context->active_id.empty() && config.path == active_config(*context).path) {
        context->tabs->select(left_tab_path(context->active_id));
        return;
    }
    leave_guard(context,
                [config = std::move(config)](const Context& later) { show_config(later, config); });
}

void load_config(const Context& context, const std::string& id) {
    flush_edits(context);
    context->active_id = id;
    const bool site = active_config(*context).kind == ConfigKind::Site;
    Shell& configurator = site ? context->site_configurator : context->project_configurator;
    context->configurator = &configurator;
    context->app.set_visible(Paths::PROJECT_CONFIGURATOR, !site);
    context->app.set_visible(Paths::SITE_CONFIGURATOR, site);
    context->active_member = 0;
    show_tab(context, configurator, configurator.sections.front().tab);
    set_view(context, configurator, "editor");
    configurator.reload(context);
}

void close_config(const Context& context, const std::string& id) {
    if (id == context->active_id)
        clear_active(context);
    const bool was_selected = context->tabs->remove(left_tab_path(id));
    std::erase_if(context->open_configs, [&](const OpenConfig& config) { return config.id == id; });
    refresh_left_tabs(context);
    if (was_selected)
        context->tabs->select(Paths::APP_TAB);
}

} // namespace Lumenfold
