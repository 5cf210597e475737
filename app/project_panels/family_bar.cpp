#include "app/project_panels/family_bar.h"

#include "app/context/app_context.h"
#include "app/context/window_paths.h"
#include "app/editing/edit_queue.h"
#include "app/forms/removal.h"
#include "app/tabs/leave_guard.h"
#include "app/tabs/left_tabs.h"
#include "app/tabs/opening.h"
#include "app/tabs/section_tabs.h"
#include "app/tabs/view_switch.h"
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

void mark_member_tab(const Context& context) {
    for (std::size_t i = 0; i < active_config(*context).members.size(); ++i) {
        const std::string tab = MEMBER_TABS + "/" + ROW_PREFIX + std::to_string(i);
        context->app.set_state(tab, "Active", i == context->active_member);
    }
}

void activate_member(const Context& context, const std::string& item) {
    const long position = row_position(item, ROW_PREFIX);
    if (position < 0 ||
        static_cast<std::size_t>(position) >= active_config(*context).members.size() ||
        static_cast<std::size_t>(position) == context->active_member)
        return;
    leave_guard(context, [position](const Context& shared) {
        show_member(shared, static_cast<std::size_t>(position));
    });
}

} // namespace

void build_family_tabs(const Context& context) {
    const std::vector<Member>& members = active_config(*context).members;
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

void show_member(const Context& context, std::size_t member) {
    flush_edits(context);
    Shell& configurator = context->project_configurator;
    show_tab(context, configurator, configurator.sections.front().tab);
    set_view(context, configurator, "editor");
    context->active_member = member;
    configurator.reload(context);
}

void update_active_members(const Context& context) {
    OpenConfig& config = *find_config(*context, context->active_id);
    config.logo = members_logo(config.members);
    refresh_left_tabs(context);
    build_family_tabs(context);
}

void set_member_logo(const Context& context, const std::string& logo) {
    OpenConfig* config = find_config(*context, context->active_id);
    if (!config || context->active_member >= config->members.size())
        return;
    config->members[context->active_member].logo = logo;
    update_active_members(context);
}

} // namespace Lumenfold
