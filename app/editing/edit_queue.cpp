#include "app/editing/edit_queue.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/editing/disk_watch.h"
#include "app/editing/json_pointer_edits.h"
#include "app/editing/reload.h"
#include "app/editing/saving.h"
#include "app/editing/text_view.h"
#include "runtime/corvel_app.h"
#include "site/config_files.h"
#include "site/path_text.h"
#include "site/versions.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <memory>
#include <optional>

namespace Lumenfold {

namespace {

constexpr int FLUSH_DELAY_MS = 500;

void queue(const Context& context, PointerEdits& edits, const std::string& pointer,
           const std::string& value) {
    EditState& state = context->edits;
    if (state.path.empty())
        return;
    edits[pointer] = value;
    const std::uint32_t generation = ++state.generation;
    if (!context->app.run_after)
        return;
    context->app.run_after(FLUSH_DELAY_MS, [context, generation] {
        if (generation == context->edits.generation)
            flush_edits(context);
    });
}

/// Writes a document with its edits, which stay pending if that fails, and is told then. An edit of
/// a record that is not in its place any more is dropped and clears `all_found`.
bool write_document(const Context& context, const std::filesystem::path& file, Json& document,
                    PointerEdits& edits, const Json& shown, bool& all_found) {
    const AppliedEdits applied = apply_edits(document, edits, &shown);
    const Result written = applied.any ? write_config_file(file, document) : Result();
    if (!written) {
        tell_unwritten_edits(context, written);
        return false;
    }
    all_found = all_found && applied.all_found;
    edits.clear();
    context->edits.told_failure.clear();
    watch_file(*context, file);
    return true;
}

bool write_configuration(const Context& context, Json& document, bool& all_found) {
    EditState& state = context->edits;
    if (!write_document(context, path_from_utf8(state.path), document, state.pending,
                        parse_or_empty(state.text), all_found))
        return false;
    take_written(context);
    return true;
}

/// The manifest as it is to be edited: an empty one if there is none yet, nothing if the file
/// there is not one that this program may write.
std::optional<Json> read_manifest(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::exists(file, error))
        return error ? std::nullopt : std::optional<Json>(Json::object());
    std::optional<Json> manifest = read_json_file(file);
    if (!manifest || !manifest->is_object() || !check_format(*manifest, nullptr))
        return std::nullopt;
    return manifest;
}

void write_manifest(const Context& context, const Json& document, bool& all_found) {
    EditState& state = context->edits;
    const std::filesystem::path folder = path_from_utf8(state.path).parent_path();
    const std::filesystem::path file =
        manifest_path(folder, text_at(member_at(document, "build"), "source_path"));
    std::optional<Json> manifest = read_manifest(file);
    if (!manifest)
        return;
    Json shown = Json::object();
    shown["build"] = *context->project.manifest_build;
    if (write_document(context, file, *manifest, state.manifest_pending, shown, all_found))
        context->project.manifest_build =
            std::make_shared<const Json>(member_at(*manifest, "build"));
}

/// An edit was meant for a record that is not in its place any more, and is dropped.
void show_changed_list(const Context& context) {
    reload_after_change(context);
    context->message_dialog.show("Changed on Disk", Result::changed().error());
}

} // namespace

void queue_edit(const Context& context, const std::string& pointer, const std::string& value) {
    queue(context, context->edits.pending, pointer, value);
}

void queue_manifest_edit(const Context& context, const std::string& pointer,
                         const std::string& value) {
    queue(context, context->edits.manifest_pending, pointer, value);
}

void flush_edits(const Context& context) {
    EditState& state = context->edits;
    ++state.generation;
    if (state.path.empty() || (state.pending.empty() && state.manifest_pending.empty()))
        return;
    std::optional<Json> document = read_json_file(path_from_utf8(state.path));
    if (!document || !document->is_object())
        return;
    bool all_found = true;
    if (!state.pending.empty() && !write_configuration(context, *document, all_found))
        return;
    if (!state.manifest_pending.empty())
        write_manifest(context, *document, all_found);
    if (!all_found)
        show_changed_list(context);
    else if (context->names_changed)
        context->names_changed(context);
}

} // namespace Lumenfold
