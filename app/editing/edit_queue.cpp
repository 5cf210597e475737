#include "app/editing/edit_queue.h"

#include "app/app_context.h"
#include "app/editing/json_pointer_edits.h"
#include "app/editing/text_view.h"
#include "app/json_view.h"
#include "runtime/corvel_app.h"
#include "site/config_files.h"
#include "site/path_text.h"
#include "site/versions.h"

#include <nlohmann/json.hpp>

#include <filesystem>
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

/// False if the file could not be opened for writing; the edits are gone then.
bool write_configuration(const Context& context, Json& document) {
    EditState& state = context->edits;
    const std::filesystem::path file = path_from_utf8(state.path);
    apply_edits(document, state.pending);
    state.pending.clear();
    if (!write_config_file(file, document))
        return false;
    set_baseline(context, read_text_file(file).value_or(std::string()));
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

void write_manifest(EditState& state, const Json& document) {
    const std::filesystem::path folder = path_from_utf8(state.path).parent_path();
    const std::filesystem::path file =
        manifest_path(folder, text_at(member_at(document, "build"), "source_path"));
    std::optional<Json> manifest = read_manifest(file);
    if (!manifest)
        return;
    apply_edits(*manifest, state.manifest_pending);
    state.manifest_pending.clear();
    write_config_file(file, *manifest);
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
    if (!state.pending.empty() && !write_configuration(context, *document))
        return;
    if (!state.manifest_pending.empty())
        write_manifest(state, *document);
}

} // namespace Lumenfold
