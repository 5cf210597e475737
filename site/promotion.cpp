#include "site/config_files.h"
#include "site/creation_p.h"
#include "site/path_text.h"
#include "site/record_lists.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

/// A promotion that passed its checks: what moves where, and the documents before it.
struct Promotion {
    fs::path site_file;
    Json site;
    std::size_t entry = 0; ///< the project's position in the registry
    Json project;          ///< the project's configuration as it was
    std::string slug;      ///< goes over to the family
    fs::path project_folder;
    fs::path member_folder;
    fs::path file_name; ///< of the configuration: the family's reference is the project's old one

    fs::path site_folder() const { return site_file.parent_path(); }
    fs::path family_file() const { return project_folder / file_name; }
    fs::path member_file() const { return member_folder / file_name; }
};

fs::path absolute_path(const fs::path& path) {
    std::error_code error;
    fs::path result = fs::absolute(path, error);
    return error ? path : result;
}

bool find_entry(Promotion& promotion, const fs::path& project_config_path) {
    const fs::path wanted = comparable_path(project_config_path);
    const Json& projects = promotion.site["projects"];
    const auto found = std::find_if(projects.begin(), projects.end(), [&](const Json& entry) {
        return resolve_reference(text_at(entry, "config"), promotion.site_folder()) == wanted;
    });
    promotion.entry = static_cast<std::size_t>(found - projects.begin());
    return found != projects.end();
}

bool read_project(Promotion& promotion, const fs::path& project_config_path, std::string* error) {
    std::optional<Json> project = read_json_file(project_config_path);
    if (!project || !project->is_object())
        return fail(error, "Cannot read project config: " + path_to_utf8(project_config_path));
    promotion.slug = text_at(*project, "slug");
    if (promotion.slug.empty())
        return fail(error, "The project's config has no slug.");
    if (!text_at(*project, "parent_slug").empty())
        return fail(error, "This project is already a family member.");
    promotion.project = std::move(*project);
    return true;
}

/// Every check, in the order in which the user hears of them; nothing is changed.
std::optional<Promotion> plan_promotion(const fs::path& site_config_path,
                                        const fs::path& project_config_path,
                                        const std::string& member_slug, std::string* error) {
    const auto refuse = [&](std::string message) {
        fail(error, std::move(message));
        return std::nullopt;
    };
    if (!is_valid_slug(member_slug))
        return refuse("Slug must be lowercase letters and digits in dash-separated runs "
                      "(like \"core\").");
    std::optional<Json> site = read_registry(site_config_path, error);
    if (!site)
        return std::nullopt;
    if (!site->contains("projects"))
        return refuse("'projects' is not an array in the site config.");
    Promotion plan{
        site_config_path, std::move(*site), 0, {}, {}, {}, {}, project_config_path.filename()};
    if (!find_entry(plan, project_config_path))
        return refuse("This project isn't registered in the site's config.");
    if (!read_project(plan, project_config_path, error))
        return std::nullopt;
    if (member_slug == plan.slug)
        return refuse("Choose a different slug — '" + plan.slug + "' stays with the family.");
    const auto rows = registered_projects(plan.site, plan.site_file, error);
    if (!rows)
        return std::nullopt;
    if (std::any_of(rows->begin(), rows->end(),
                    [&](const ProjectRow& row) { return row.parent_slug == plan.slug; }))
        return refuse("'" + plan.slug + "' is already a project family.");
    plan.project_folder = absolute_path(project_config_path).parent_path();
    plan.member_folder =
        plan.project_folder.parent_path() / path_from_utf8(plan.slug + "-" + member_slug);
    if (is_occupied(plan.member_folder))
        return refuse(path_to_utf8(plan.member_folder) + " already exists.");
    return plan;
}

Json make_family(const Promotion& promotion) {
    Json family = Json::object();
    family["format"] = CONFIG_FORMAT_VERSION;
    family["slug"] = promotion.slug;
    family["name"] = "";
    for (const char* key : {"name", "tagline", "logo"})
        if (promotion.project.contains(key))
            family[key] = promotion.project[key];
    return family;
}

Json make_member(const Promotion& promotion, const std::string& member_slug,
                 const std::string& family_label) {
    constexpr std::array<std::string_view, 4> REPLACED = {"format", "slug", "parent_slug",
                                                          "family_label"};
    Json member = Json::object();
    member["format"] = CONFIG_FORMAT_VERSION;
    member["slug"] = member_slug;
    member["parent_slug"] = promotion.slug;
    for (const auto& [key, value] : promotion.project.items())
        if (std::find(REPLACED.begin(), REPLACED.end(), key) == REPLACED.end())
            member[key] = value;
    if (!family_label.empty())
        member["family_label"] = family_label;
    return member;
}

/// `file` as the registry refers to it.
std::string make_reference(const fs::path& file, const fs::path& site_folder) {
    // Without looking at the disk first: a project folder may be a link to another place.
    fs::path relative = absolute_path(file).lexically_normal().lexically_relative(
        absolute_path(site_folder).lexically_normal());
    if (relative.empty() || *relative.begin() == "..") {
        std::error_code error;
        const fs::path resolved = fs::relative(file, site_folder, error);
        if (!error && !resolved.empty())
            relative = resolved;
    }
    if (relative.empty())
        return path_to_utf8(file); // on another drive
    const std::u8string text = relative.generic_u8string();
    const std::string reference(text.begin(), text.end());
    return reference.starts_with("./") ? reference : "./" + reference;
}

/// The family takes the project's reference, directly ahead of the member.
void register_family(Promotion& promotion) {
    Json& projects = promotion.site["projects"];
    Json family = Json::object();
    family["config"] = projects[promotion.entry]["config"];
    projects[promotion.entry]["config"] =
        make_reference(promotion.member_file(), promotion.site_folder());
    projects.insert(projects.begin() + static_cast<std::ptrdiff_t>(promotion.entry),
                    std::move(family));
}

struct Undo {
    bool remove_family_file = false;
    bool restore_config = false;
};

/// Back to the project as it was. Deletes only what the promotion made, so that nothing of the
/// user's goes with it.
void undo_promotion(const Promotion& promotion, Undo undo) {
    std::error_code ignored;
    if (undo.remove_family_file)
        fs::remove(promotion.family_file(), ignored);
    fs::remove(promotion.project_folder, ignored);
    fs::rename(promotion.member_folder, promotion.project_folder, ignored);
    if (undo.restore_config)
        write_config_file(promotion.family_file(), promotion.project);
}

bool holds(const fs::path& folder, const fs::path& path) {
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first ==
           folder.end();
}

/// Whether the site itself or another project lies in the project's folder: a move would take it
/// along and leave the registry behind.
bool holds_others(const Promotion& promotion) {
    const fs::path folder = comparable_path(promotion.project_folder);
    const fs::path own_file = comparable_path(promotion.family_file());
    const Json& projects = promotion.site.at("projects");
    return holds(folder, comparable_path(promotion.site_folder())) ||
           std::any_of(projects.begin(), projects.end(), [&](const Json& entry) {
               const fs::path file =
                   resolve_reference(text_at(entry, "config"), promotion.site_folder());
               return file != own_file && holds(folder, file);
           });
}

std::error_code move_project(const Promotion& promotion) {
    if (holds_others(promotion))
        return std::make_error_code(std::errc::invalid_argument);
    std::error_code error;
    fs::rename(promotion.project_folder, promotion.member_folder, error);
    return error;
}

/// Everything behind the rename. On failure the old state is back.
bool write_promotion(Promotion& promotion, const Json& member, std::string* error) {
    const auto undo = [&](const fs::path& unwritten, Undo what) {
        undo_promotion(promotion, what);
        return fail(error, "Could not write " + path_to_utf8(unwritten));
    };
    const fs::path family_file = promotion.family_file();
    std::error_code problem;
    fs::create_directories(promotion.project_folder, problem);
    if (problem)
        return undo(family_file, {});
    if (!write_config_file(family_file, make_family(promotion), WriteCheck::Complete))
        return undo(family_file, {.remove_family_file = true});
    // The member's file is the project's own, moved: a write cut short has damaged it.
    if (!write_config_file(promotion.member_file(), member, WriteCheck::Complete))
        return undo(promotion.member_file(), {true, true});
    register_family(promotion);
    if (!write_config_file(promotion.site_file, promotion.site, WriteCheck::Complete))
        return undo(promotion.site_file, {true, true});
    return true;
}

} // namespace

bool promote_to_family(const fs::path& site_config_path, const fs::path& project_config_path,
                       const std::string& member_slug, const std::string& family_label,
                       fs::path* family_path, fs::path* member_path, std::string* error) {
    std::optional<Promotion> promotion =
        plan_promotion(site_config_path, project_config_path, member_slug, error);
    if (!promotion)
        return false;
    const Json member = make_member(*promotion, member_slug, family_label);
    if (const std::error_code problem = move_project(*promotion))
        return fail(error, "Could not move " + path_to_utf8(promotion->project_folder) + ": " +
                               problem.message());
    if (!write_promotion(*promotion, member, error))
        return false;
    if (family_path)
        *family_path = promotion->family_file();
    if (member_path)
        *member_path = promotion->member_file();
    return true;
}

} // namespace Lumenfold
