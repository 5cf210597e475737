#include "app/project_panels/project_files.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/editing/disk_watch.h"
#include "app/editing/edit_queue.h"
#include "app/editing/waiting_edits.h"
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
                                       path_from_utf8(context.project.source_path) /
                                       path_from_utf8(value);
    return path_to_utf8(file.lexically_normal());
}

std::filesystem::path project_manifest(const AppContext& context) {
    return path_from_utf8(shown_manifest(context));
}

void read_manifest_state(const Context& context) {
    ProjectState& state = context->project;
    const std::filesystem::path file = project_manifest(*context);
    watch_file(*context, file);
    Json manifest = Json::object();
    std::string problem;
    std::error_code error;
    const bool loaded = load_manifest(file, manifest, &problem);
    const bool is_there = !loaded && std::filesystem::exists(file, error);
    state.manifest_problem = is_there ? problem : std::string();
    state.manifest_build = std::make_shared<const Json>(member_at(manifest, "build"));
    if (!is_there && manifest.is_object())
        resume_edits(context, path_to_utf8(file), context->edits.manifest_pending, manifest);
    state.edited_build = std::make_shared<const Json>(member_at(manifest, "build"));
}

std::filesystem::path site_config_above(const AppContext& context) {
    const std::filesystem::path file = find_site_above(member_folder(context)) / SITE_FILE_NAME;
    std::error_code ignored;
    return std::filesystem::is_regular_file(file, ignored) ? file : std::filesystem::path();
}

} // namespace Lumenfold
