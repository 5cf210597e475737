#include "app/site_panels/project_cards.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/context/window_paths.h"
#include "app/editing/disk_watch.h"
#include "app/editing/edit_queue.h"
#include "app/editing/reload.h"
#include "app/forms/removal.h"
#include "app/tabs/opening.h"
#include "runtime/corvel_app.h"
#include "site/config_files.h"
#include "site/path_text.h"
#include "site/project_groups.h"
#include "site/registry.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <utility>
#include <vector>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

const std::string CARDS_LIST = "projectCards";
const std::string ORPHANS_LIST = "orphanRows";
const std::string PANEL = Paths::SITE_CONFIGURATOR + "/Editor Panel/Panels/Projects Panel";
const std::string ORPHANS_LABEL = PANEL + "/Orphans Label";
const std::string ORPHAN_ROWS = PANEL + "/Orphan Rows";

std::string logo_of(const RegisteredProject& entry) {
    return path_to_utf8(resolve_project_logo(entry.file.parent_path(), entry.info.logo));
}

/// What a card calls a project; one that cannot be read, by its folder.
std::string title_of(const RegisteredProject& entry) {
    return entry.info.problem.empty() ? entry.info.name
                                      : read_title(entry.file, ConfigKind::Project);
}

ProjectTarget make_target(const ProjectGroup& group) {
    ProjectTarget target;
    const RegisteredProject* lead = group.lead();
    if (lead) {
        target.path = path_to_utf8(lead->file);
        target.title = title_of(*lead);
    }
    target.members = members_of(group);
    return target;
}

Corvel::ListEntry make_row(const std::string& id, const ProjectGroup& group) {
    Corvel::ListEntry row{id, {{"title", ""}}};
    const RegisteredProject* lead = group.lead();
    if (!lead)
        return row;
    row.fields["title"] = title_of(*lead);
    for (const std::string& line : {lead->info.tagline, lead->info.problem})
        if (!line.empty())
            row.fields["tagline"] = line;
    if (std::string logo = logo_of(*lead); !logo.empty())
        row.fields["logo"] = std::move(logo);
    return row;
}

void publish_orphans(const Context& context, const std::vector<std::string>& names) {
    std::vector<Corvel::ListEntry> rows;
    for (const std::string& name : names) {
        const std::string id = "orphan-" + std::to_string(rows.size());
        const std::string reference = "./projects/" + name + "/" + PROJECT_FILE_NAME;
        context->site.cards.orphans[id] = reference;
        rows.push_back({id, {{"dir", name}, {"config", reference}}});
    }
    context->app.set_visible(ORPHANS_LABEL, !rows.empty());
    context->app.set_visible(ORPHAN_ROWS, !rows.empty());
    context->app.set_rows(ORPHANS_LIST, std::move(rows));
}

void activate_card(const Context& context, const ProjectTarget& target) {
    // A family without a lead opens by its first member.
    const std::string path = target.path.empty() ? target.members.front().path : target.path;
    open_project_card(context, path, target.title, target.members);
}

void ask_to_remove(const Context& context, const ProjectTarget& target) {
    const std::size_t count = target.members.size();
    const std::string entries = count == 1
                                    ? "Its project entry leaves"
                                    : "Its " + std::to_string(count) + " project entries leave";
    std::vector<fs::path> files;
    for (const Member& member : target.members)
        files.push_back(path_from_utf8(member.path));
    confirm_removal(context, "Remove Project",
                    "Remove '" + target.title + "' from this site? " + entries +
                        " the site's registry; the files stay on disk.",
                    [files](const Context& later) {
                        return remove_projects(path_from_utf8(later->edits.path), files);
                    });
}

void register_orphan(const Context& context, const std::string& reference) {
    if (!anything_is_open(*context))
        return;
    flush_edits(context);
    if (add_project_entry(path_from_utf8(context->edits.path), reference))
        reload_after_change(context);
}

} // namespace

void fill_project_cards(const Context& context, const Json& site) {
    const fs::path root = path_from_utf8(context->edits.path).parent_path();
    CardTargets& cards = context->site.cards;
    cards = {};
    const std::vector<fs::path> registered = registered_files(site, root);
    for (const fs::path& file : registered)
        watch_file(*context, file);
    std::vector<Corvel::ListEntry> rows;
    for (const ProjectGroup& group : group_projects(registered)) {
        const std::string id = "proj-" + std::to_string(rows.size());
        cards.projects[id] = make_target(group);
        rows.push_back(make_row(id, group));
    }
    context->app.set_state(PANEL, "Empty", rows.empty());
    context->app.set_rows(CARDS_LIST, std::move(rows));
    publish_orphans(context, find_orphans(root, registered));
}

void wire_project_cards(const Context& context) {
    context->app.on_row_click(CARDS_LIST, [context](const std::string&, const std::string& id,
                                                    const std::string& action) {
        const auto found = context->site.cards.projects.find(id);
        if (found == context->site.cards.projects.end())
            return;
        const ProjectTarget target = found->second; // opening refills the map
        if (action == "activate")
            activate_card(context, target);
        else if (action == "remove")
            ask_to_remove(context, target);
    });
    context->app.on_row_click(ORPHANS_LIST, [context](const std::string&, const std::string& id,
                                                      const std::string& action) {
        const auto found = context->site.cards.orphans.find(id);
        if (action != "activate" || found == context->site.cards.orphans.end())
            return;
        const std::string reference = found->second; // the reload refills the map
        register_orphan(context, reference);
    });
}

} // namespace Lumenfold
