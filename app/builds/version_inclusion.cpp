#include "app/builds/version_inclusion.h"

#include "app/app_context.h"
#include "app/builds/build_state.h"
#include "app/builds/versions_panel.h"
#include "app/editing/edit_queue.h"
#include "app/projects/project_state.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/versions.h"

namespace Lumenfold {
namespace {

bool is_real_directory(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::symlink_status(path, error).type() ==
           std::filesystem::file_type::directory;
}

void include(const Context& context, const VersionRowUi& row) {
    flush_edits(context);
    if (include_version(path_from_utf8(context->edits.path), row.tag_mm, row.released))
        refresh_versions(context);
}

void exclude(const Context& context, const std::string& config_path, const std::string& tag_mm) {
    flush_edits(context);
    const std::filesystem::path config = path_from_utf8(config_path);
    if (!exclude_version(config, tag_mm))
        return;
    if (const auto output = version_output(config, tag_mm)) {
        std::error_code ignored;
        std::filesystem::remove_all(*output, ignored);
    }
    refresh_versions(context);
}

} // namespace

std::optional<std::filesystem::path> version_output(const std::filesystem::path& config_path,
                                                    const std::string& tag_mm) {
    if (tag_mm.empty() || tag_mm == "." || tag_mm.find("..") != std::string::npos ||
        tag_mm.find_first_of(std::string_view("/\\\0", 3)) != std::string::npos)
        return std::nullopt;
    const std::filesystem::path versions = config_path.parent_path() / "versions";
    const std::filesystem::path folder = versions / path_from_utf8(tag_mm);
    // Through a link the deletion would reach another place.
    if (!is_real_directory(versions) || !is_real_directory(folder))
        return std::nullopt;
    return folder;
}

void toggle_version(const Context& context, const std::string& checkbox, std::size_t position) {
    const std::vector<VersionRowUi>& rows = context->project->version_rows;
    if (context->edits.path.empty() || position >= rows.size())
        return;
    const VersionRowUi row = rows[position];
    context->app.set_checked(checkbox, row.included);
    if (!row.included) {
        include(context, row);
        return;
    }
    const std::string config_path = context->edits.path;
    if (!version_output(path_from_utf8(config_path), row.tag_mm)) {
        exclude(context, config_path, row.tag_mm);
        return;
    }
    context->confirm_dialog.show(
        "Exclude Version",
        "Exclude " + row.tag_mm +
            " and delete its generated output? Re-check Include to declare it again.",
        "Exclude", [config_path, tag_mm = row.tag_mm](const Context& shared) {
            exclude(shared, config_path, tag_mm);
        });
}

} // namespace Lumenfold
