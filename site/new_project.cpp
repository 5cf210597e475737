#include "site/new_project.h"

#include "site/config_files.h"
#include "site/path_text.h"
#include "site/record_lists.h"
#include "site/registry.h"
#include "site/slug.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <system_error>
#include <vector>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

/// What can be said against a record without looking at the site.
Result check_record(const NewProjectRecord& record) {
    if (record.name.empty())
        return Result::failed("The project needs a name.");
    if (!is_valid_slug(record.slug))
        return Result::failed("Slug must be lowercase letters and digits in dash-separated runs "
                              "(like \"profile-api\").");
    // The family's slug was read from a file, and begins the name of the member's folder.
    return record.parent_slug.empty() ? Result() : require_valid_slug(record.parent_slug);
}

/// Where in the registry a new project goes. Refuses a slug that is taken and an unknown family.
Result find_place(const std::vector<ProjectRow>& rows, const NewProjectRecord& record,
                  std::size_t& place) {
    const bool member = !record.parent_slug.empty();
    std::optional<std::size_t> found;
    if (!member)
        found = rows.size();
    for (const ProjectRow& row : rows) {
        const std::string& family = row.parent_slug.empty() ? row.slug : row.parent_slug;
        if (member && family != record.parent_slug)
            continue;
        if (row.slug == record.slug)
            return Result::failed(
                member ? "The family already has a project with slug '" + record.slug + "'."
                       : "A project with slug '" + record.slug + "' already exists in this site.");
        if (member)
            found = row.index + 1;
    }
    if (!found)
        return Result::failed("No project with slug '" + record.parent_slug +
                              "' to add a member to.");
    place = *found;
    return {};
}

/// A member's folder begins with its family's slug, without saying it twice.
std::string project_folder_name(const NewProjectRecord& record) {
    const std::string prefix = record.parent_slug + "-";
    if (record.parent_slug.empty() || record.slug.starts_with(prefix))
        return record.slug;
    return prefix + record.slug;
}

Json new_project(const NewProjectRecord& record) {
    const bool member = !record.parent_slug.empty();
    Json project = Json::object();
    project["format"] = CONFIG_FORMAT_VERSION;
    project["slug"] = record.slug;
    if (member)
        project["parent_slug"] = record.parent_slug;
    project["name"] = record.name;
    if (!record.tagline.empty())
        project["tagline"] = record.tagline;
    if (member && !record.family_label.empty())
        project["family_label"] = record.family_label;
    return project;
}

/// Makes the project's folder and its configuration `file`.
Result write_new_project(const fs::path& file, const Json& project) {
    if (is_occupied(file))
        return Result::failed(path_to_utf8(file) + " already exists.");
    std::error_code problem;
    fs::create_directories(file.parent_path(), problem);
    if (problem)
        return Result::failed("Could not create " + path_to_utf8(file.parent_path()) + ": " +
                              problem.message());
    if (!write_config_file(file, project))
        return Result::failed("Could not write " + path_to_utf8(file));
    return {};
}

Result register_project(const fs::path& site_config_path, Json& site, std::size_t place,
                        const std::string& folder_name) {
    Json entry = Json::object();
    entry["config"] = "./projects/" + folder_name + "/" + PROJECT_FILE_NAME;
    Json& projects = list_at(site, "projects");
    projects.insert(projects.begin() + static_cast<std::ptrdiff_t>(place), std::move(entry));
    if (!write_config_file(site_config_path, site))
        return Result::failed("Could not write " + path_to_utf8(site_config_path));
    return {};
}

Result make_project(const fs::path& site_config_path, const NewProjectRecord& record,
                    fs::path* created_path) {
    if (Result checked = check_record(record); !checked)
        return checked;
    Json site;
    if (Result read = read_registry(site_config_path, site); !read)
        return read;
    std::vector<ProjectRow> rows;
    if (Result read = registered_projects(site, site_config_path, rows); !read)
        return read;
    std::size_t place = 0;
    if (Result found = find_place(rows, record, place); !found)
        return found;
    const std::string folder_name = project_folder_name(record);
    const fs::path file = site_config_path.parent_path() / "projects" /
                          path_from_utf8(folder_name) / PROJECT_FILE_NAME;
    if (Result written = write_new_project(file, new_project(record)); !written)
        return written;
    Result registered = register_project(site_config_path, site, place, folder_name);
    if (!registered) {
        std::error_code ignored;
        fs::remove(file, ignored);
    } else if (created_path) {
        *created_path = file;
    }
    return registered;
}

} // namespace

bool create_project(const fs::path& site_config_path, const NewProjectRecord& record,
                    fs::path* created_path, std::string* error) {
    return make_project(site_config_path, record, created_path).report_to(error);
}

} // namespace Lumenfold
