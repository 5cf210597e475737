#include "app/projects/project_files.h"

#include "app/app_context.h"
#include "app/json_view.h"
#include "app/later.h"
#include "app/projects/project_state.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/versions.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {

std::filesystem::path member_folder(const AppContext& context) {
    return path_from_utf8(context.edits.path).parent_path();
}

std::string resolve_source(const AppContext& context, const std::string& value) {
    if (value.empty())
        return {};
    // A path joined with an absolute one is that absolute one.
    const std::filesystem::path file = member_folder(context) /
                                       path_from_utf8(context.project->source_path) /
                                       path_from_utf8(value);
    return path_to_utf8(file.lexically_normal());
}

std::filesystem::path project_manifest(const AppContext& context) {
    return manifest_path(member_folder(context), context.project->source_path);
}

Json manifest_build(const AppContext& context) {
    Json manifest;
    if (!load_manifest(project_manifest(context), manifest, nullptr))
        return Json::object();
    return member_at(manifest, "build");
}

std::filesystem::path site_config_above(const AppContext& context) {
    const std::filesystem::path file = find_site_above(member_folder(context)) / SITE_FILE_NAME;
    std::error_code ignored;
    return std::filesystem::is_regular_file(file, ignored) ? file : std::filesystem::path();
}

Member read_member(const std::filesystem::path& config_path, bool umbrella) {
    const ProjectInfo info =
        read_project_info(path_to_utf8(config_path), config_path.parent_path());
    Member member;
    member.path = path_to_utf8(config_path);
    member.label = info.family_label.empty() ? info.name : info.family_label;
    if (umbrella)
        member.label = "Overview";
    member.umbrella = umbrella;
    member.logo = path_to_utf8(resolve_project_logo(config_path.parent_path(), info.logo));
    member.tagline = info.tagline;
    return member;
}

void show_image(AppContext& context, const std::string& path, const std::string& file) {
    context.app.set_visible(path, !file.empty());
    context.app.set_source(path, file);
}

void show_replaced_image(const Context& context, const std::string& path, const std::string& file) {
    show_image(*context, path, file);
    if (!context->app.run_after)
        return;
    context->app.set_source(path, "");
    run_later(context, REREAD_DELAY_MS,
              [context, path, file] { context->app.set_source(path, file); });
}

} // namespace Lumenfold
