#include "app/project_panels/version_inclusion.h"

#include "app/context/app_context.h"
#include "app/context/build_state.h"
#include "app/context/project_state.h"
#include "app/editing/edit_queue.h"
#include "app/editing/reload.h"
#include "app/editing/text_view.h"
#include "app/project_panels/versions_panel.h"
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

/// Shows what became of a change of the declared versions, and of others' if the file held more
/// than `was_shown`.
void take_result(const Context& context, const Result& result, bool was_shown) {
    if (!result) {
        context->message_dialog.show("Couldn't Save", result.error());
    } else if (was_shown) {
        take_written(context);
        refresh_versions(context);
    } else {
        reload_after_change(context);
    }
}

void include(const Context& context, const VersionRowUi& row) {
    flush_edits(context);
    const bool is_shown = shows_disk(*context);
    take_result(context,
                include_version(path_from_utf8(context->edits.path), row.tag_mm, row.released),
                is_shown);
}

void exclude(const Context& context, const std::string& config_path, const std::string& tag_mm) {
    flush_edits(context);
    const bool is_shown = shows_disk(*context);
    const std::filesystem::path config = path_from_utf8(config_path);
    const Result excluded = exclude_version(config, tag_mm);
    if (const auto output = version_output(config, tag_mm); excluded && output) {
        std::error_code ignored;
        std::filesystem::remove_all(*output, ignored);
    }
    take_result(context, excluded, is_shown);
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
    const std::vector<VersionRowUi>& rows = context->project.version_rows;
    if (!anything_is_open(*context) || position >= rows.size())
        return;
    const VersionRowUi row = rows[position];
    context->app.set_checked(checkbox, row.included);
    if (row.tag_mm.empty())
        return;
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
