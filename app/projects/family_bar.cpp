#include "app/projects/family_bar.h"

#include "app/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/view_switch.h"
#include "app/later.h"
#include "app/node_state.h"
#include "app/panels/removal.h"
#include "app/projects/project_panels.h"
#include "app/projects/project_state.h"
#include "app/shell/leave_guard.h"
#include "app/shell/opening.h"
#include "app/shell/tabs.h"
#include "app/shell/window_paths.h"
#include "runtime/corvel_app.h"

namespace Lumenfold {
namespace {

constexpr const char* LIST = "familyTabs";
constexpr const char* ROW_PREFIX = "member-";
const std::string FAMILY_BAR = Paths::PROJECT_CONFIGURATOR + "/Family Bar";
const std::string FAMILY_DIVIDER = Paths::PROJECT_CONFIGURATOR + "/Family Divider";
const std::string MEMBER_TABS = FAMILY_BAR + "/Member Tabs";

Corvel::ListEntry make_row(const Member& member, std::size_t position) {
    Corvel::ListEntry row{ROW_PREFIX + std::to_string(position), {{"label", member.label}}};
    if (!member.tagline.empty())
        row.fields["tagline"] = member.tagline;
    if (!member.logo.empty())
        row.fields["logo"] = member.logo;
    if (member.umbrella)
        row.fields["umbrella"] = "1";
    return row;
}

void activate_member(const Context& context, const std::string& item) {
    const long position = row_position(item, ROW_PREFIX);
    if (position < 0 || static_cast<std::size_t>(position) >= context->active.members.size() ||
        static_cast<std::size_t>(position) == context->project->member_index)
        return;
    leave_guard(context, [position](const Context& shared) {
        show_member(shared, static_cast<std::size_t>(position));
    });
}

/// Carries the active configuration over to its tab's record.
void keep_active_members(AppContext& context) {
    context.active.logo = members_logo(context.active.members);
    if (OpenConfig* tab = active_tab_record(context))
        *tab = context.active;
}

void publish_members(const Context& context) {
    refresh_left_tabs(context);
    build_family_tabs(context);
}

} // namespace

void build_family_tabs(const Context& context) {
    const std::vector<Member>& members = context->active.members;
    std::vector<Corvel::ListEntry> rows;
    for (const Member& member : members)
        rows.push_back(make_row(member, rows.size()));
    context->app.set_rows(LIST, std::move(rows));
    context->app.set_visible(FAMILY_BAR, members.size() >= 2);
    context->app.set_visible(FAMILY_DIVIDER, members.size() >= 2);
    // A mark belongs to a position: a longer family before this one may have left its own.
    mark_member_tab(context);
}

void wire_family_tabs(const Context& context) {
    context->app.on_row_click(
        LIST, [context](const std::string&, const std::string& item, const std::string& action) {
            if (action == "activate")
                activate_member(context, item);
        });
}

void mark_member_tab(const Context& context) {
    for (std::size_t i = 0; i < context->active.members.size(); ++i) {
        const std::string tab = MEMBER_TABS + "/" + ROW_PREFIX + std::to_string(i);
        set_state(context->app, tab, "Active", i == context->project->member_index);
    }
}

void show_member(const Context& context, std::size_t member) {
    flush_edits(context);
    show_tab(context, context->project_shell, "Project Tab");
    set_view(context, context->project_shell, "editor");
    fill_project_panels(context, context->active, member);
}

void update_active_members(const Context& context) {
    keep_active_members(*context);
    publish_members(context);
}

void set_member_logo(const Context& context, const std::string& logo) {
    std::vector<Member>& members = context->active.members;
    if (context->project->member_index >= members.size())
        return;
    std::string& shown = members[context->project->member_index].logo;
    const bool reread = shown == logo && context->app.run_after;
    if (reread)
        shown.clear();
    else
        shown = logo;
    update_active_members(context);
    if (!reread)
        return;
    shown = logo;
    keep_active_members(*context);
    // Whatever is in front by then: the tab is on screen all the same.
    context->app.run_after(REREAD_DELAY_MS, [context] { publish_members(context); });
}

} // namespace Lumenfold
