#include "app/editing/waiting_edits.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/editing/edit_queue.h"
#include "app/editing/json_pointer_edits.h"
#include "app/editing/saving.h"
#include "site/path_text.h"
#include "site/result.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace Lumenfold {

namespace {

void put_aside(EditState& state, const std::string& file, PointerEdits& pending, Json shown) {
    if (pending.empty())
        return;
    state.waiting.emplace(file, WaitingEdits{std::exchange(pending, {}),
                                             std::make_shared<const Json>(std::move(shown))});
}

} // namespace

void note_unwritten(AppContext& context, const std::string& file, const std::string& reason) {
    UnwrittenEdits& noted = context.edits.unwritten[file];
    if (noted.reason != reason)
        noted = {reason, false};
}

void tell_unwritten(const Context& context, const std::string& file) {
    const auto noted = context->edits.unwritten.find(file);
    if (noted != context->edits.unwritten.end() && !std::exchange(noted->second.told, true))
        tell_failed_save(context, noted->second.reason);
}

void put_edits_aside(const Context& context, const std::string& next) {
    EditState& state = context->edits;
    const std::string manifest = state.manifest_pending.empty() ? "" : shown_manifest(*context);
    const bool is_left = state.path != next;
    if (is_left && !state.pending.empty())
        tell_unwritten(context, state.path);
    else if (is_left && !manifest.empty())
        tell_unwritten(context, manifest);
    put_aside(state, state.path, state.pending, parse_or_empty(state.text));
    if (!manifest.empty())
        put_aside(state, manifest, state.manifest_pending,
                  Json{{"build", *context->project.manifest_build}});
}

void put_manifest_edits_aside(const Context& context) {
    if (context->edits.manifest_pending.empty())
        return;
    const std::string manifest = shown_manifest(*context);
    tell_unwritten(context, manifest);
    put_aside(context->edits, manifest, context->edits.manifest_pending,
              Json{{"build", *context->project.manifest_build}});
}

void resume_edits(const Context& context, const std::string& file, PointerEdits& pending,
                  Json& document) {
    std::multimap<std::string, WaitingEdits>& waiting = context->edits.waiting;
    bool all_found = true;
    for (auto edits = waiting.find(file); edits != waiting.end() && edits->first == file;
         edits = waiting.erase(edits)) {
        FittingEdits fitting =
            find_fitting(document, edits->second.edits, edits->second.shown.get());
        all_found = all_found && fitting.all_found;
        fitting.edits.merge(pending); // what is merged is older
        pending = std::move(fitting.edits);
    }
    assign_edits(document, pending);
    if (!pending.empty())
        flush_later(context);
    if (!all_found)
        tell_changed_list(context);
}

void drop_waiting_edit(AppContext& context, const std::string& file, const std::string& pointer) {
    const auto [begin, end] = context.edits.waiting.equal_range(file);
    for (auto edits = begin; edits != end; ++edits)
        edits->second.edits.erase(pointer);
}

void drop_overtaken_edits(AppContext& context, const std::string& text) {
    const Json before = parse_or_empty(context.edits.text);
    const Json after = parse_or_empty(text);
    std::erase_if(context.edits.pending, [&](const auto& edit) {
        return text_at_pointer(before, edit.first) != text_at_pointer(after, edit.first);
    });
}

} // namespace Lumenfold
