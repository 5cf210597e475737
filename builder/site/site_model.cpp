#include "builder/site/site_model.h"

#include "builder/site/parallel.h"
#include "site/config_files.h"
#include "site/creation.h"
#include "site/path_text.h"

#include <unordered_map>
#include <utility>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

struct LoadedProject {
    std::optional<ProjectConfig> config;
    Message fault;
};

LoadedProject load_project(const std::string& reference, const fs::path& site_folder) {
    const fs::path path = project_file(reference, site_folder);
    LoadedProject loaded;
    loaded.fault = {Severity::Fault, shown_path(path, site_folder), 0, {}};
    std::optional<ConfigFile> file =
        read_config_file(path, loaded.fault.file, loaded.fault.text, loaded.fault.line);
    if (!file)
        return loaded;
    ProjectConfig config = read_project_config(*std::move(file));
    if (config.slug.empty())
        loaded.fault.text = "has no slug. Give the project one, it is its part of the address.";
    else if (!is_valid_slug(config.slug))
        loaded.fault.text = "the slug '" + config.slug +
                            "' cannot name a folder: use lowercase letters and digits in "
                            "dash-separated runs.";
    else
        loaded.config = std::move(config);
    if (!loaded.config)
        loaded.fault.line = config.file.line_of(config.slug);
    return loaded;
}

class Places {
public:
    Places(std::vector<SiteProject>& projects, Messages& messages)
        : projects_(projects)
        , messages_(messages) {
        for (std::size_t i = 0; i < projects.size(); ++i)
            if (projects[i].config.parent_slug.empty())
                tops_.try_emplace(projects[i].config.slug, i);
        // A parent may itself be a member, so that families can stand in families.
        for (std::size_t i = 0; i < projects.size(); ++i)
            tops_.try_emplace(projects[i].config.slug, i);
    }

    /// Gives every project its family and address; whether all got one.
    bool settle() {
        for (std::size_t i = 0; i < projects_.size(); ++i)
            projects_[i].family = find_family(i);
        bool all = true;
        std::unordered_map<std::string, std::size_t> taken;
        for (std::size_t i = 0; i < projects_.size(); ++i) {
            SiteProject& project = projects_[i];
            project.address = address_of(i);
            if (project.address.empty()) {
                tell(Severity::Fault, project, project.config.parent_slug,
                     "its families form a circle: '" + project.config.parent_slug +
                         "' leads back to it. Change one parent_slug.");
                all = false;
                continue;
            }
            const auto [first, fresh] = taken.try_emplace(project.address, i);
            if (!fresh) {
                tell(Severity::Fault, project, project.config.slug,
                     "has the address /" + project.address + " of " +
                         projects_[first->second].config.file.name + ". Change one slug.");
                project.address.clear();
                all = false;
            }
        }
        return all;
    }

private:
    std::size_t find_family(std::size_t member) {
        const std::string& parent = projects_[member].config.parent_slug;
        if (parent.empty())
            return NO_PROJECT;
        const auto found = tops_.find(parent);
        if (found != tops_.end() && found->second != member)
            return found->second;
        tell(Severity::Complaint, projects_[member], parent,
             "no project has the slug '" + parent +
                 "' of its family. It is shown as a project of its own; register the family, or "
                 "take parent_slug out.");
        return NO_PROJECT;
    }

    /// Empty when the families above form a circle.
    std::string address_of(std::size_t index) const {
        std::string address;
        std::size_t steps = 0;
        for (; index != NO_PROJECT; index = projects_[index].family) {
            if (++steps > projects_.size())
                return {};
            address.insert(0, projects_[index].config.slug + "/");
        }
        return address;
    }

    void tell(Severity severity, const SiteProject& project, const std::string& where,
              std::string text) {
        const ConfigFile& file = project.config.file;
        messages_.push_back({severity, file.name, file.line_of(where), std::move(text)});
    }

    std::vector<SiteProject>& projects_;
    Messages& messages_;
    std::unordered_map<std::string, std::size_t> tops_;
};

/// Takes out the projects without an address, and lists members with their families.
void keep_placed(std::vector<SiteProject>& projects) {
    std::vector<std::size_t> places(projects.size(), NO_PROJECT);
    std::vector<SiteProject> kept;
    kept.reserve(projects.size());
    for (std::size_t i = 0; i < projects.size(); ++i) {
        if (projects[i].address.empty())
            continue;
        places[i] = kept.size();
        kept.push_back(std::move(projects[i]));
    }
    for (std::size_t i = 0; i < kept.size(); ++i) {
        SiteProject& project = kept[i];
        if (project.family == NO_PROJECT)
            continue;
        project.family = places[project.family];
        if (project.family != NO_PROJECT)
            kept[project.family].members.push_back(i);
    }
    projects = std::move(kept);
}

bool load_projects(SiteModel& site, unsigned threads, Messages& messages) {
    const std::vector<std::string>& references = site.config.projects;
    std::vector<LoadedProject> loaded(references.size());
    for_each_index(references.size(), threads, [&](std::size_t i) {
        loaded[i] = load_project(references[i], site.config.folder);
    });
    bool all = true;
    for (LoadedProject& project : loaded) {
        if (project.config) {
            site.projects.push_back({*std::move(project.config), {}, NO_PROJECT, {}});
        } else {
            messages.push_back(std::move(project.fault));
            all = false;
        }
    }
    return all;
}

} // namespace

fs::path project_file(const std::string& reference, const fs::path& site_folder) {
    return (site_folder / path_from_utf8(reference)).lexically_normal();
}

std::optional<SiteModel> load_site(const fs::path& site_file, unsigned threads,
                                   Messages& messages) {
    const fs::path path = fs::absolute(site_file).lexically_normal();
    Message fault{Severity::Fault, path_to_utf8(path.filename()), 0, {}};
    std::optional<ConfigFile> file = read_config_file(path, fault.file, fault.text, fault.line);
    if (!file) {
        fault.file = path_to_utf8(path);
        messages.push_back(std::move(fault));
        return std::nullopt;
    }
    SiteModel site;
    site.config = read_site_config(*std::move(file));
    const bool all_read = load_projects(site, threads, messages);
    const bool all_placed = Places(site.projects, messages).settle();
    keep_placed(site.projects);
    site.complete = all_read && all_placed;
    return site;
}

} // namespace Lumenfold::Builder
