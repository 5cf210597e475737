#include "site/config_files.h"
#include "site/creation_p.h"
#include "site/path_text.h"
#include "site/record_lists.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <ctime>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

std::string current_year() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    const std::tm* local = std::localtime(&now);
    return local ? std::to_string(1900 + local->tm_year) : std::string();
}

/// The first text of a site's configuration, laid out for reading rather than by the serialiser.
std::string new_site_text(const std::string& title) {
    const std::string quoted = quote_json_string(title);
    const std::string copyright = quote_json_string("(c) " + current_year() + " " + title);
    return "{\n"
           "  \"format\": 1,\n"
           "  \"title\": " +
           quoted +
           ",\n"
           "  \"description\": \"A new site\",\n"
           "  \"copyright\": " +
           copyright +
           ",\n"
           "  \"output\": \"./output\",\n"
           "  \"branding\": {\n"
           "    \"tab_text\": " +
           quoted +
           "\n"
           "  },\n"
           "  \"footer_links\": [],\n"
           "  \"projects\": [],\n"
           "  \"socials\": [],\n"
           "  \"home\": {\n"
           "    \"sections\": [\n"
           "      { \"type\": \"description\" },\n"
           "      { \"type\": \"projects\" },\n"
           "      { \"type\": \"socials\" }\n"
           "    ]\n"
           "  },\n"
           "  \"pages\": {\n"
           "    \"home_title\": " +
           quoted +
           "\n"
           "  }\n"
           "}\n";
}

/// Where in the registry a new project goes; nothing, with words in `error`, if its slug is taken
/// or its family unknown.
std::optional<std::size_t> find_place(const std::vector<ProjectRow>& rows,
                                      const NewProjectRecord& record, std::string* error) {
    std::optional<std::size_t> place;
    if (record.parent_slug.empty())
        place = rows.size();
    for (const ProjectRow& row : rows) {
        const std::string& family = row.parent_slug.empty() ? row.slug : row.parent_slug;
        if (!record.parent_slug.empty() && family != record.parent_slug)
            continue;
        if (row.slug == record.slug) {
            fail(error,
                 record.parent_slug.empty()
                     ? "A project with slug '" + record.slug + "' already exists in this site."
                     : "The family already has a project with slug '" + record.slug + "'.");
            return std::nullopt;
        }
        if (!record.parent_slug.empty())
            place = row.index + 1;
    }
    if (!place)
        fail(error, "No project with slug '" + record.parent_slug + "' to add a member to.");
    return place;
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
bool write_new_project(const fs::path& file, const Json& project, std::string* error) {
    if (is_occupied(file))
        return fail(error, path_to_utf8(file) + " already exists.");
    std::error_code problem;
    fs::create_directories(file.parent_path(), problem);
    if (problem)
        return fail(error, "Could not create " + path_to_utf8(file.parent_path()) + ": " +
                               problem.message());
    if (!write_config_file(file, project, WriteCheck::Complete))
        return fail(error, "Could not write " + path_to_utf8(file));
    return true;
}

} // namespace

bool create_site(const fs::path& folder, const std::string& title, std::string* error) {
    const fs::path file = folder / SITE_FILE_NAME;
    if (is_occupied(file))
        return fail(error, ".lumenfold-site already exists in " + path_to_utf8(folder));
    const fs::path fragments = folder / "content-fragments";
    std::error_code problem;
    fs::create_directories(fragments, problem);
    if (problem)
        return fail(error, "Could not create site directory: " + path_to_utf8(fragments));
    const fs::path images = folder / "images";
    fs::create_directories(images, problem);
    if (problem)
        return fail(error, "Could not create site images directory: " + path_to_utf8(images));
    const std::string text = new_site_text(title.empty() ? "My Site" : title);
    if (!write_text_file(file, text, WriteCheck::Complete))
        return fail(error, "Could not write " + path_to_utf8(file));
    return true;
}

bool create_project(const fs::path& site_config_path, const NewProjectRecord& record,
                    fs::path* created_path, std::string* error) {
    if (record.name.empty())
        return fail(error, "The project needs a name.");
    if (!is_valid_slug(record.slug))
        return fail(error, "Slug must be lowercase letters and digits in dash-separated runs "
                           "(like \"profile-api\").");
    std::optional<Json> site = read_registry(site_config_path, error);
    if (!site)
        return false;
    const auto rows = registered_projects(*site, site_config_path, error);
    if (!rows)
        return false;
    const std::optional<std::size_t> place = find_place(*rows, record, error);
    if (!place)
        return false;

    const std::string folder_name = project_folder_name(record);
    const fs::path file = site_config_path.parent_path() / "projects" /
                          path_from_utf8(folder_name) / PROJECT_FILE_NAME;
    if (!write_new_project(file, new_project(record), error))
        return false;

    Json entry = Json::object();
    entry["config"] = "./projects/" + folder_name + "/" + PROJECT_FILE_NAME;
    Json& projects = list_at(*site, "projects");
    projects.insert(projects.begin() + static_cast<std::ptrdiff_t>(*place), std::move(entry));
    if (!write_config_file(site_config_path, *site, WriteCheck::Complete)) {
        std::error_code ignored;
        fs::remove(file, ignored);
        return fail(error, "Could not write " + path_to_utf8(site_config_path));
    }
    if (created_path)
        *created_path = file;
    return true;
}

} // namespace Lumenfold
