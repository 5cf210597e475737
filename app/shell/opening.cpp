#include "app/shell/opening.h"

#include "app/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/file_editor.h"
#include "app/editing/text_view.h"
#include "app/editing/view_switch.h"
#include "app/json_view.h"
#include "app/panels/website_panel.h"
#include "app/projects/family_bar.h"
#include "app/projects/project_panels.h"
#include "app/shell/leave_guard.h"
#include "app/shell/tabs.h"
#include "app/shell/window_paths.h"
#include "runtime/corvel_app.h"
#include "runtime/window_tabs.h"
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

/// Reads what a tab shows of a site.
void describe_site(OpenConfig& config, const std::filesystem::path& file) {
    const std::optional<Json> json = read_json_file(file);
    if (json)
        config.logo = path_to_utf8(
            resolve_image(file.parent_path(), text_at(member_at(*json, "branding"), "logo_path")));
}

/// Makes the only member of a project opened by its file.
void describe_project(OpenConfig& config, const std::filesystem::path& file) {
    const std::filesystem::path folder = file.parent_path();
    const ProjectInfo info = read_project_info(config.path, folder);
    config.members = {{.path = config.path,
                       .label = info.family_label.empty() ? info.name : info.family_label,
                       .umbrella = false,
                       .logo = path_to_utf8(resolve_project_logo(folder, info.logo)),
                       .tagline = info.tagline}};
    config.logo = members_logo(config.members);
}

/// The continuation of `open_tab`, with nothing unsaved left to lose.
void show_config(const Context& context, OpenConfig config) {
    if (const auto found = find_open(*context, config.path); found != context->open_configs.end()) {
        // A card knows the family of a project that was opened by its file.
        if (config.members.size() > found->members.size()) {
            found->members = std::move(config.members);
            found->logo = std::move(config.logo);
            refresh_left_tabs(context);
        }
        const std::string id = found->id;
        load_config(context, *found);
        context->tabs->select(left_tab_path(id));
        return;
    }
    config.id = "config-" + std::to_string(context->next_config_number++);
    const std::string tab = left_tab_path(config.id);
    context->open_configs.push_back(config);
    refresh_left_tabs(context);
    load_config(context, std::move(config));
    context->tabs->add(tab, Paths::CONFIG_PANE, "Active");
    context->tabs->select(tab);
}

/// Forgets the active configuration with everything typed into its editors.
void clear_active(const Context& context) {
    flush_edits(context);
    start_editing(context, "", "");
    context->active = {};
    // Left as they are, they would hold back the next configuration with a question about this one.
    for (const Guard& guard : context->shell->guards)
        load_file_editor(context->app, *guard.editor, "");
}

} // namespace

const Member* lead_member(const std::vector<Member>& members) {
    const auto umbrella = std::find_if(members.begin(), members.end(),
                                       [](const Member& member) { return member.umbrella; });
    if (umbrella != members.end())
        return &*umbrella;
    return members.empty() ? nullptr : &members.front();
}

std::string members_logo(const std::vector<Member>& members) {
    const Member* lead = lead_member(members);
    return lead ? lead->logo : std::string();
}

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
        describe_site(config, file);
    else
        describe_project(config, file);
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
    config.members = std::move(members);
    config.logo = members_logo(config.members);
    open_tab(context, std::move(config));
}

void open_tab(const Context& context, OpenConfig config) {
    if (!context->active.id.empty() && config.path == context->active.path) {
        context->tabs->select(left_tab_path(context->active.id));
        return;
    }
    leave_guard(context,
                [config = std::move(config)](const Context& later) { show_config(later, config); });
}

void load_config(const Context& context, OpenConfig config) {
    flush_edits(context);
    context->active = std::move(config);
    const bool site = context->active.kind == ConfigKind::Site;
    Shell& shell = site ? context->site_shell : context->project_shell;
    context->shell = &shell;
    context->app.set_visible(Paths::PROJECT_CONFIGURATOR, !site);
    context->app.set_visible(Paths::SITE_CONFIGURATOR, site);
    if (!site)
        build_family_tabs(context);
    show_tab(context, shell, shell.tabs.front().tab);
    set_view(context, shell, "editor");
    if (site)
        fill_site_panels(context, context->active);
    else
        fill_project_panels(context, context->active, 0);
}

void close_config(const Context& context, const std::string& id) {
    if (id == context->active.id)
        clear_active(context);
    const bool was_selected = context->tabs->remove(left_tab_path(id));
    std::erase_if(context->open_configs, [&](const OpenConfig& config) { return config.id == id; });
    refresh_left_tabs(context);
    if (was_selected)
        context->tabs->select(Paths::APP_TAB);
}

} // namespace Lumenfold
