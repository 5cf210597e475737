#include "site/project_groups.h"

#include "site/config_files.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

using Paths = std::unordered_set<fs::path::string_type>;

bool says_nothing(const ProjectInfo& info) {
    return info.slug.empty() && info.name.empty() && info.tagline.empty() &&
           info.parent_slug.empty() && info.family_label.empty() && info.logo.empty() &&
           info.problem.empty();
}

} // namespace

std::vector<fs::path> registered_files(const Json& site, const fs::path& site_folder) {
    std::vector<fs::path> files;
    Paths known;
    const auto projects = site.find("projects");
    if (projects == site.end() || !projects->is_array())
        return files;
    for (const Json& entry : *projects) {
        const std::string reference = text_at(entry, "config");
        if (reference.empty())
            continue;
        fs::path file = resolve_reference(reference, site_folder);
        if (known.insert(file.native()).second)
            files.push_back(std::move(file));
    }
    return files;
}

const RegisteredProject* ProjectGroup::lead() const {
    const auto found = std::find_if(entries.begin(), entries.end(), [](const auto& entry) {
        return entry.info.parent_slug.empty();
    });
    return found == entries.end() ? nullptr : &*found;
}

std::vector<ProjectGroup> group_projects(const std::vector<fs::path>& files) {
    std::vector<ProjectGroup> groups;
    std::unordered_map<std::string, std::size_t> group_of;
    for (const fs::path& file : files) {
        RegisteredProject project{file, read_project_info(file)};
        const ProjectInfo& info = project.info;
        if (says_nothing(info))
            continue;
        const std::string& family = info.parent_slug.empty() ? info.slug : info.parent_slug;
        std::size_t place = groups.size();
        if (!family.empty())
            place = group_of.emplace(family, place).first->second;
        if (place == groups.size())
            groups.emplace_back();
        groups[place].entries.push_back(std::move(project));
    }
    return groups;
}

std::vector<std::string> find_orphans(const fs::path& site_folder,
                                      const std::vector<fs::path>& registered) {
    Paths files;
    Paths folders;
    for (const fs::path& file : registered) {
        files.insert(file.native());
        folders.insert(file.parent_path().native());
    }
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(site_folder / "projects", error), end; !error && it != end;
         it.increment(error)) {
        std::error_code unreadable;
        const fs::path file = it->path() / PROJECT_FILE_NAME;
        // The file may also be a link to a registered one elsewhere.
        if (it->is_directory(unreadable) && fs::exists(file, unreadable) &&
            !folders.contains(comparable_path(it->path()).native()) &&
            !files.contains(comparable_path(file).native()))
            names.push_back(path_to_utf8(it->path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace Lumenfold
