#include "app/editing/text_view.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/editing/disk_watch.h"
#include "app/editing/editor_text.h"
#include "app/editing/reload.h"
#include "app/editing/saving.h"
#include "app/editing/text_keeper.h"
#include "runtime/corvel_app.h"
#include "site/json_file.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace Lumenfold {

namespace {

void judge_text(const Context& context, const std::string& text) {
    if (!anything_is_open(*context))
        return;
    JsonError error;
    if (text == context->edits.text)
        set_status(context, TextStatus::Clean, offer_message(context->configurator->keeper));
    else if (parse_json(text, &error))
        set_status(context, TextStatus::Unsaved,
                   context->edits.changed_on_disk ? "Changed on disk" : "Unsaved changes");
    else
        set_status(context, TextStatus::Invalid, describe_json_error(error, text));
}

void write(const Context& context, const std::string& text) {
    if (!save_text(context, path_from_utf8(context->edits.path), text))
        return;
    stop_keeping(*context, context->configurator->keeper);
    reload(context);
}

void save(const Context& context, const Shell& configurator) {
    if (configurator.save_disabled || !anything_is_open(*context))
        return;
    const std::string text = context->app.input_value(configurator.text_editor);
    if (!parse_json(text))
        return;
    compare_text_with_disk(context);
    if (!context->edits.changed_on_disk) {
        write(context, text);
        return;
    }
    ask_to_overwrite(context, [text](const Context& later) { write(later, text); });
}

void restart(const Context& context, const std::string& path, const std::string& text) {
    EditState& state = context->edits;
    if (const auto end_query = std::exchange(state.end_query, nullptr))
        end_query();
    state.path = path;
    state.pending.clear();
    state.manifest_pending.clear();
    state.watched.clear();
    set_baseline(context, text);
    TextKeeper& keeper = context->configurator->keeper;
    start_keeping(*context, keeper, path, text);
    set_status(context, TextStatus::Clean, offer_message(keeper));
}

} // namespace

void set_status(const Context& context, TextStatus status, const std::string& message) {
    Shell& configurator = *context->configurator;
    context->app.set_text(configurator.status_message, message);
    configurator.invalid = status == TextStatus::Invalid;
    context->app.set_state(configurator.status_bar, "Invalid", configurator.invalid);
    configurator.save_disabled = status != TextStatus::Unsaved;
    context->app.set_state(configurator.save_button, "Disabled", configurator.save_disabled);
}

void set_baseline(const Context& context, const std::string& text) {
    context->edits.text = text;
    context->configurator->keeper.baseline = text;
    context->edits.changed_on_disk = false;
    fill_editor(context->app, context->configurator->text_editor, text);
}

Json start_editing(const Context& context, const std::string& path) {
    const std::string text = read_text_file(path_from_utf8(path)).value_or(std::string());
    restart(context, path, text);
    watch_file(*context, path_from_utf8(path));
    return parse_or_empty(text);
}

void take_written(const Context& context) {
    const std::filesystem::path file = path_from_utf8(context->edits.path);
    set_baseline(context, read_text_file(file).value_or(std::string()));
    watch_file(*context, file);
}

void stop_editing(const Context& context) {
    restart(context, "", "");
}

void compare_text_with_disk(const Context& context) {
    EditState& state = context->edits;
    const auto text = read_text_file(path_from_utf8(state.path));
    state.changed_on_disk = text && *text != state.text;
    judge_text(context, context->app.input_value(context->configurator->text_editor));
}

bool text_view_dirty(const AppContext& context, const Shell& configurator) {
    return anything_is_open(context) &&
           context.app.input_value(configurator.text_editor) != context.edits.text;
}

void wire_text_view(const Context& context, Shell& configurator) {
    context->app.add_state(configurator.save_button, "Disabled");
    context->app.on_input(configurator.text_editor,
                          [context, &configurator](const std::string& text) {
                              judge_text(context, text);
                              keep_later(context, configurator.keeper);
                          });
    wire_text_keeper(context, configurator.keeper, configurator.status_bar,
                     configurator.text_editor, [context, &configurator] {
                         judge_text(context, context->app.input_value(configurator.text_editor));
                     });
    context->app.on_click(configurator.save_button,
                          [context, &configurator] { save(context, configurator); });
}

} // namespace Lumenfold
