#include "app/tabs/left_tabs.h"

#include "app/context/app_context.h"
#include "app/context/window_paths.h"
#include "app/tabs/leave_guard.h"
#include "app/tabs/opening.h"
#include "runtime/corvel_app.h"
#include "screens/window_tabs.h"
#include "site/json_file.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace Lumenfold {

namespace {

const std::string LEFT_TABS_LIST = "leftTabs";

std::string tab_icon(const OpenConfig& config) {
    if (config.kind == ConfigKind::Site)
        return "site";
    return config.members.size() < 2 ? "project" : "project-family";
}

void activate(const Context& context, const std::string& id) {
    if (id == context->active_id)
        context->tabs->select(left_tab_path(id));
    else if (find_config(*context, id))
        leave_guard(context, [id](const Context& later) {
            load_config(later, id);
            later->tabs->select(left_tab_path(id));
        });
}

std::size_t position_of(const std::vector<Member>& members, const std::string& path) {
    const std::filesystem::path own = comparable_path(path_from_utf8(path));
    const auto found = std::find_if(members.begin(), members.end(), [&](const Member& member) {
        return comparable_path(path_from_utf8(member.path)) == own;
    });
    return static_cast<std::size_t>(found - members.begin());
}

/// Members come and go with the registry; the one whose panels are shown stays.
void read_project_names(AppContext& context, OpenConfig& config) {
    std::vector<Member> members;
    if (config.from_registry)
        members = registered_members(path_from_utf8(config.path));
    const bool is_active = config.id == context.active_id;
    const std::size_t shown = is_active ? position_of(members, context.edits.path) : std::size_t(0);
    if (shown < members.size()) {
        config.members = std::move(members);
        context.active_member = is_active ? shown : context.active_member;
    } else {
        for (Member& member : config.members)
            member = read_member(path_from_utf8(member.path), member.umbrella);
    }
    config.logo = members_logo(config.members);
}

/// A file that cannot be read leaves the names as they are.
void read_names(AppContext& context, OpenConfig& config) {
    const std::filesystem::path file = path_from_utf8(config.path);
    if (!read_json_file(file))
        return;
    config.title = read_title(file, config.kind);
    if (config.kind == ConfigKind::Site)
        config.logo = read_site_logo(file);
    else
        read_project_names(context, config);
}

} // namespace

std::string left_tab_path(const std::string& id) {
    return Paths::LEFT_TABS + "/" + id;
}

void refresh_left_tabs(const Context& context) {
    std::vector<Corvel::ListEntry> rows;
    for (const OpenConfig& config : context->open_configs) {
        Corvel::ListEntry row{config.id, {{"title", config.title}, {"icon", tab_icon(config)}}};
        if (!config.logo.empty())
            row.fields["logo"] = config.logo;
        rows.push_back(std::move(row));
    }
    context->app.set_rows(LEFT_TABS_LIST, std::move(rows));
}

void refresh_names(const Context& context) {
    for (OpenConfig& config : context->open_configs)
        read_names(*context, config);
    refresh_left_tabs(context);
}

void set_tab_logo(const Context& context, const std::string& logo) {
    if (OpenConfig* config = find_config(*context, context->active_id))
        config->logo = logo;
    refresh_left_tabs(context);
}

void wire_left_tabs(const Context& context) {
    context->app.on_row_click(LEFT_TABS_LIST, [context](const std::string&, const std::string& id,
                                                        const std::string& action) {
        if (action == "activate")
            activate(context, id);
        else if (action == "close")
            close_config(context, id);
    });
}

} // namespace Lumenfold
