#include "app/panels/project_cards.h"

#include "app/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/reload.h"
#include "app/json_view.h"
#include "app/node_state.h"
#include "app/panels/removal.h"
#include "app/panels/site_state.h"
#include "app/shell/opening.h"
#include "app/shell/window_paths.h"
#include "runtime/corvel_app.h"
#include "site/config_files.h"
#include "site/path_text.h"
#include "site/records.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>
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

/// One registered project whose file says something.
struct Entry {
    fs::path file;
    ProjectInfo info;
};

/// The entries of one family, or a project alone.
struct Group {
    std::vector<Entry> entries;

    /// The family's own entry; null if the registry lacks it.
    const Entry* lead() const {
        const auto found = std::find_if(entries.begin(), entries.end(), [](const Entry& entry) {
            return entry.info.parent_slug.empty();
        });
        return found == entries.end() ? nullptr : &*found;
    }
};

struct Registry {
    std::vector<Group> groups; ///< in order of first appearance
    std::set<fs::path> files;  ///< of every entry, also of one that cannot be read
};

bool says_nothing(const ProjectInfo& info) {
    return info.slug.empty() && info.name.empty() && info.tagline.empty() &&
           info.parent_slug.empty() && info.family_label.empty() && info.logo.empty();
}

Registry read_registry(const Json& site, const fs::path& root) {
    Registry registry;
    std::map<std::string, std::size_t> group_of;
    for (const Json& element : array_at(site, "projects")) {
        const std::string reference = text_at(element, "config");
        if (reference.empty())
            continue;
        Entry entry{resolve_reference(reference, root), read_project_info(reference, root)};
        registry.files.insert(entry.file);
        if (says_nothing(entry.info))
            continue;
        const std::string& key =
            entry.info.parent_slug.empty() ? entry.info.slug : entry.info.parent_slug;
        const auto [known, is_new] = group_of.emplace(key, registry.groups.size());
        if (is_new)
            registry.groups.emplace_back();
        registry.groups[known->second].entries.push_back(std::move(entry));
    }
    return registry;
}

std::string logo_of(const Entry& entry) {
    return path_to_utf8(resolve_project_logo(entry.file.parent_path(), entry.info.logo));
}

ProjectTarget make_target(const Group& group) {
    ProjectTarget target;
    const Entry* lead = group.lead();
    if (lead) {
        target.path = path_to_utf8(lead->file);
        target.title = lead->info.name;
    }
    for (const Entry& entry : group.entries) {
        const ProjectInfo& info = entry.info;
        Member member;
        member.path = path_to_utf8(entry.file);
        member.umbrella = &entry == lead && group.entries.size() > 1;
        member.label = info.family_label.empty() ? info.name : info.family_label;
        if (member.umbrella)
            member.label = "Overview";
        member.logo = logo_of(entry);
        member.tagline = info.tagline;
        target.members.push_back(std::move(member));
    }
    return target;
}

Corvel::ListEntry make_row(const std::string& id, const Group& group) {
    Corvel::ListEntry row{id, {{"title", ""}}};
    const Entry* lead = group.lead();
    if (!lead)
        return row;
    row.fields["title"] = lead->info.name;
    if (!lead->info.tagline.empty())
        row.fields["tagline"] = lead->info.tagline;
    if (std::string logo = logo_of(*lead); !logo.empty())
        row.fields["logo"] = std::move(logo);
    return row;
}

/// Names of the folders below "projects" that hold a project which no entry means, by path.
std::vector<std::string> find_orphans(const fs::path& root, const std::set<fs::path>& registered) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(root / "projects", error), end; !error && it != end;
         it.increment(error)) {
        std::error_code unreadable;
        const fs::path file = it->path() / PROJECT_FILE_NAME;
        if (it->is_directory(unreadable) && fs::exists(file, unreadable) &&
            registered.count(comparable_path(file)) == 0)
            names.push_back(path_to_utf8(it->path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

void publish_orphans(const Context& context, const std::vector<std::string>& names) {
    std::vector<Corvel::ListEntry> rows;
    for (const std::string& name : names) {
        const std::string id = "orphan-" + std::to_string(rows.size());
        const std::string reference = "./projects/" + name + "/" + PROJECT_FILE_NAME;
        context->site->cards.orphans[id] = reference;
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
                    [files](const std::string& config_path) {
                        return remove_projects(path_from_utf8(config_path), files);
                    });
}

void register_orphan(const Context& context, const std::string& reference) {
    if (context->edits.path.empty())
        return;
    flush_edits(context);
    if (add_project_entry(path_from_utf8(context->edits.path), reference))
        reload_after_change(context);
}

} // namespace

void fill_project_cards(const Context& context, const Json& site) {
    const fs::path root = path_from_utf8(context->edits.path).parent_path();
    CardTargets& cards = context->site->cards;
    cards = {};
    const Registry registry = read_registry(site, root);
    std::vector<Corvel::ListEntry> rows;
    for (const Group& group : registry.groups) {
        const std::string id = "proj-" + std::to_string(rows.size());
        cards.projects[id] = make_target(group);
        rows.push_back(make_row(id, group));
    }
    set_state(context->app, PANEL, "Empty", rows.empty());
    context->app.set_rows(CARDS_LIST, std::move(rows));
    publish_orphans(context, find_orphans(root, registry.files));
}

void wire_project_cards(const Context& context) {
    context->app.on_row_click(CARDS_LIST, [context](const std::string&, const std::string& id,
                                                    const std::string& action) {
        const auto found = context->site->cards.projects.find(id);
        if (found == context->site->cards.projects.end())
            return;
        const ProjectTarget target = found->second; // opening refills the map
        if (action == "activate")
            activate_card(context, target);
        else if (action == "remove")
            ask_to_remove(context, target);
    });
}

void wire_orphan_rows(const Context& context) {
    context->app.on_row_click(ORPHANS_LIST, [context](const std::string&, const std::string& id,
                                                      const std::string& action) {
        const auto found = context->site->cards.orphans.find(id);
        if (action != "activate" || found == context->site->cards.orphans.end())
            return;
        const std::string reference = found->second; // the reload refills the map
        register_orphan(context, reference);
    });
}

} // namespace Lumenfold
