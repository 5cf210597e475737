#include "site/promotion.h"

#include "site/config_files.h"
#include "site/path_text.h"
#include "site/record_lists.h"
#include "site/registry.h"
#include "site/slug.h"

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
    std::size_t entry = 0;    ///< the project's position in the registry
    std::string project_text; ///< the bytes of the project's configuration
    Json project;             ///< what they mean
    std::string slug;         ///< goes over to the family
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

Result read_project(Promotion& promotion, const fs::path& project_config_path) {
    std::optional<std::string> text = read_text_file(project_config_path);
    std::optional<Json> project = text ? parse_json(*text) : std::nullopt;
    if (!project || !project->is_object())
        return Result::failed("Cannot read project config: " + path_to_utf8(project_config_path));
    promotion.slug = text_at(*project, "slug");
    if (promotion.slug.empty())
        return Result::failed("The project's config has no slug.");
    if (!text_at(*project, "parent_slug").empty())
        return Result::failed("This project is already a family member.");
    promotion.project_text = std::move(*text);
    promotion.project = std::move(*project);
    return require_valid_slug(promotion.slug);
}

/// Reads what the promotion works on.
Result read_files(Promotion& plan, const fs::path& project_config_path) {
    if (Result read = read_registry(plan.site_file, plan.site); !read)
        return read;
    if (!plan.site.contains("projects"))
        return Result::failed("'projects' is not an array in the site config.");
    if (!find_entry(plan, project_config_path))
        return Result::failed("This project isn't registered in the site's config.");
    return read_project(plan, project_config_path);
}

/// Whether neither the member nor the family is there already.
Result check_slugs(const Promotion& plan, const std::string& member_slug) {
    if (member_slug == plan.slug)
        return Result::failed("Choose a different slug — '" + plan.slug +
                              "' stays with the family.");
    std::vector<ProjectRow> rows;
    if (Result read = registered_projects(plan.site, plan.site_file, rows); !read)
        return read;
    if (std::any_of(rows.begin(), rows.end(),
                    [&](const ProjectRow& row) { return row.parent_slug == plan.slug; }))
        return Result::failed("'" + plan.slug + "' is already a project family.");
    return {};
}

/// Every check, in the order in which the user hears of them; nothing is changed.
Result plan_promotion(Promotion& plan, const fs::path& project_config_path,
                      const std::string& member_slug) {
    if (!is_valid_slug(member_slug))
        return Result::failed("Slug must be lowercase letters and digits in dash-separated runs "
                              "(like \"core\").");
    if (Result read = read_files(plan, project_config_path); !read)
        return read;
    if (Result checked = check_slugs(plan, member_slug); !checked)
        return checked;
    plan.file_name = project_config_path.filename();
    plan.project_folder = absolute_path(project_config_path).parent_path();
    plan.member_folder =
        plan.project_folder.parent_path() / path_from_utf8(plan.slug + "-" + member_slug);
    if (is_occupied(plan.member_folder))
        return Result::failed(path_to_utf8(plan.member_folder) + " already exists.");
    return {};
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
            append_member(member, key, value);
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
/// user's goes with it. False if its content had to stay in the member's folder.
bool undo_promotion(const Promotion& promotion, Undo undo) {
    std::error_code error;
    if (undo.remove_family_file)
        fs::remove(promotion.family_file(), error);
    fs::remove(promotion.project_folder, error);
    fs::rename(promotion.member_folder, promotion.project_folder, error);
    if (error)
        return false;
    return !undo.restore_config ||
           static_cast<bool>(write_text_file(promotion.family_file(), promotion.project_text));
}

/// What lies in the project's folder and would be moved along behind the registry's back: the site
/// itself or another project's file. Empty if nothing does.
fs::path find_other(const Promotion& promotion) {
    const fs::path folder = comparable_path(promotion.project_folder);
    const fs::path own_file = comparable_path(promotion.family_file());
    if (lies_within(comparable_path(promotion.site_folder()), folder))
        return promotion.site_file;
    for (const Json& entry : promotion.site.at("projects")) {
        const fs::path file = resolve_reference(text_at(entry, "config"), promotion.site_folder());
        if (file != own_file && lies_within(file, folder))
            return file;
    }
    return {};
}

Result move_project(const Promotion& promotion) {
    const std::string refusal = "Could not move " + path_to_utf8(promotion.project_folder) + ": ";
    if (const fs::path other = find_other(promotion); !other.empty())
        return Result::failed(refusal + "it also holds " + path_to_utf8(other) + ".");
    std::error_code error;
    fs::rename(promotion.project_folder, promotion.member_folder, error);
    return error ? Result::failed(refusal + error.message()) : Result();
}

/// Everything behind the rename. On failure the old state is back.
Result write_promotion(Promotion& promotion, const Json& member) {
    // The path that could not be written may be gone after the undo, so it is said where all is.
    const auto undo = [&](const fs::path& unwritten, Undo what) {
        const bool undone = undo_promotion(promotion, what);
        return Result::failed(
            "Could not write " + path_to_utf8(unwritten) +
            (undone ? ". The project is as it was, in " : ". The project's files are now in ") +
            path_to_utf8(undone ? promotion.project_folder : promotion.member_folder) + ".");
    };
    const fs::path family_file = promotion.family_file();
    std::error_code problem;
    fs::create_directories(promotion.project_folder, problem);
    if (problem || !write_config_file(family_file, make_family(promotion)))
        return undo(family_file, {});
    if (!write_config_file(promotion.member_file(), member))
        return undo(promotion.member_file(), {.remove_family_file = true});
    register_family(promotion);
    if (!write_config_file(promotion.site_file, promotion.site))
        return undo(promotion.site_file, {.remove_family_file = true, .restore_config = true});
    return {};
}

} // namespace

bool promote_to_family(const fs::path& site_config_path, const fs::path& project_config_path,
                       const std::string& member_slug, const std::string& family_label,
                       fs::path* family_path, fs::path* member_path, std::string* error) {
    Promotion promotion;
    promotion.site_file = site_config_path;
    if (Result planned = plan_promotion(promotion, project_config_path, member_slug); !planned)
        return planned.report_to(error);
    const Json member = make_member(promotion, member_slug, family_label);
    if (Result moved = move_project(promotion); !moved)
        return moved.report_to(error);
    if (Result written = write_promotion(promotion, member); !written)
        return written.report_to(error);
    if (family_path)
        *family_path = promotion.family_file();
    if (member_path)
        *member_path = promotion.member_file();
    return true;
}

} // namespace Lumenfold
