#include "app/editing/edit_queue.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/editing/disk_watch.h"
#include "app/editing/json_pointer_edits.h"
#include "app/editing/reload.h"
#include "app/editing/saving.h"
#include "app/editing/text_view.h"
#include "app/editing/waiting_edits.h"
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

void queue(const Context& context, const std::string& file, PointerEdits& edits,
           const std::string& pointer, const std::string& value) {
    edits[pointer] = value;
    drop_waiting_edit(*context, file, pointer);
    flush_later(context);
}

/// Writes a document with its edits, which stay pending if that fails, and is told then. An edit of
/// a record that is not in its place any more is dropped and clears `all_found`.
bool write_document(const Context& context, const std::string& file, Json& document,
                    PointerEdits& edits, const Json& shown, bool& all_found) {
    const FittingEdits fitting = find_fitting(document, edits, &shown);
    assign_edits(document, fitting.edits);
    const Result written =
        fitting.edits.empty() ? Result() : write_config_file(path_from_utf8(file), document);
    if (!written) {
        note_unwritten(*context, file, written.error());
        tell_unwritten(context, file);
        return false;
    }
    all_found = all_found && fitting.all_found;
    edits.clear();
    context->edits.unwritten.erase(file);
    watch_file(*context, path_from_utf8(file));
    return true;
}

bool write_configuration(const Context& context, Json& document, bool& all_found) {
    EditState& state = context->edits;
    const bool is_shown = shows_disk(*context);
    if (!write_document(context, state.path, document, state.pending, parse_or_empty(state.text),
                        all_found))
        return false;
    if (is_shown)
        take_written(context);
    else
        reload_after_change(context); // what is on screen is not what the edits joined
    return true;
}

/// Reads the configuration that edits are to be written to.
Result read_configuration(const std::string& file, Json& document) {
    const std::optional<std::string> text = read_text_file(path_from_utf8(file));
    if (!text)
        return Result::failed(file + ": the file cannot be read");
    JsonError problem;
    std::optional<Json> read = parse_json(*text, &problem);
    if (!read)
        return Result::failed(file + ": " + describe_json_error(problem, *text));
    if (!read->is_object())
        return Result::failed(file + ": the file holds no JSON object");
    document = std::move(*read);
    return {};
}

/// The manifest as it is to be edited: an empty one if there is none yet. Fails if the file there
/// is not one that this program may write.
Result read_manifest(const std::string& file, Json& manifest) {
    std::error_code error;
    manifest = Json::object();
    if (!std::filesystem::exists(path_from_utf8(file), error))
        return error ? Result::failed(file + ": " + error.message()) : Result();
    std::string problem;
    if (!load_manifest(path_from_utf8(file), manifest, &problem))
        return Result::failed(problem);
    if (!manifest.is_object())
        return Result::failed(file + ": the file holds no JSON object");
    return {};
}

void write_manifest(const Context& context, bool& all_found) {
    const std::string file = shown_manifest(*context);
    Json manifest;
    if (const Result read = read_manifest(file, manifest); !read) {
        note_unwritten(*context, file, read.error());
        return;
    }
    const Json shown = {{"build", *context->project.manifest_build}};
    const bool is_shown = member_at(manifest, "build") == shown.at("build");
    if (!write_document(context, file, manifest, context->edits.manifest_pending, shown, all_found))
        return;
    context->project.manifest_build = std::make_shared<const Json>(member_at(manifest, "build"));
    if (!is_shown)
        reload_after_change(context);
}

/// An edit was meant for a record that is not in its place any more, and is dropped.
void show_changed_list(const Context& context) {
    reload_after_change(context);
    tell_changed_list(context);
}

} // namespace

std::string shown_manifest(const AppContext& context) {
    return path_to_utf8(manifest_path(path_from_utf8(context.edits.path).parent_path(),
                                      context.project.source_path));
}

void flush_later(const Context& context) {
    const std::uint32_t generation = ++context->edits.generation;
    if (!context->app.run_after)
        return;
    context->app.run_after(FLUSH_DELAY_MS, [context, generation] {
        if (generation == context->edits.generation)
            flush_edits(context);
    });
}

void queue_edit(const Context& context, const std::string& pointer, const std::string& value) {
    if (anything_is_open(*context))
        queue(context, context->edits.path, context->edits.pending, pointer, value);
}

void queue_manifest_edit(const Context& context, const std::string& pointer,
                         const std::string& value) {
    if (anything_is_open(*context))
        queue(context, shown_manifest(*context), context->edits.manifest_pending, pointer, value);
}

void flush_edits(const Context& context) {
    EditState& state = context->edits;
    ++state.generation;
    if (state.path.empty() || (state.pending.empty() && state.manifest_pending.empty()))
        return;
    Json document;
    if (const Result read = read_configuration(state.path, document); !read) {
        note_unwritten(*context, state.path, read.error());
        return;
    }
    bool all_found = true;
    if (!state.pending.empty() && !write_configuration(context, document, all_found))
        return;
    if (!state.manifest_pending.empty())
        write_manifest(context, all_found);
    if (!all_found)
        show_changed_list(context);
    else if (context->names_changed)
        context->names_changed(context);
}

} // namespace Lumenfold
