#include "app/editing/text_view.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/editing/disk_watch.h"
#include "app/editing/editor_text.h"
#include "app/editing/reload.h"
#include "app/editing/saving.h"
#include "app/editing/text_keeper.h"
#include "app/editing/waiting_edits.h"
#include "runtime/corvel_app.h"
#include "site/json_file.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <utility>

namespace Lumenfold {

namespace {

bool changed_beneath(const AppContext& context) {
    return !context.edits.text.empty() && changed_beneath(context.configurator->keeper);
}

void judge_text(const Context& context, const std::string& text) {
    if (!anything_is_open(*context))
        return;
    TextKeeper& keeper = context->configurator->keeper;
    JsonError error;
    if (text == context->edits.text) {
        keeper.begun_on = text;
        set_status(context, TextStatus::Clean, offer_message(keeper));
    } else if (parse_json(text, &error)) {
        set_status(context, TextStatus::Unsaved,
                   changed_beneath(*context) ? "Changed on disk" : "Unsaved changes");
    } else {
        set_status(context, TextStatus::Invalid, describe_json_error(error, text));
        context->app.set_data(context->configurator->text_editor,
                              std::to_string(json_error_line(error, text)));
    }
}

/// Shows the text of a file that comes up, or of the one shown once nothing is unsaved.
void show_text(const Context& context, const std::string& text) {
    TextKeeper& keeper = context->configurator->keeper;
    context->edits.text = text;
    fill_editor(context->app, context->configurator->text_editor, text);
    start_keeping(*context, keeper, context->edits.path, text);
    set_status(context, TextStatus::Clean, offer_message(keeper));
}

/// Takes over what the file shown holds now; unsaved text stays.
void take_text(const Context& context, const std::string& text) {
    if (!text_view_dirty(*context, *context->configurator)) {
        show_text(context, text);
        return;
    }
    context->edits.text = text;
    context->configurator->keeper.baseline = text;
    keep_now(*context, context->configurator->keeper);
    judge_text(context, context->app.input_value(context->configurator->text_editor));
}

void write(const Context& context, const std::string& text) {
    if (!save_text(context, path_from_utf8(context->edits.path), text))
        return;
    EditState& state = context->edits;
    drop_overtaken_edits(*context, text);
    put_edits_aside(context, state.path); // they were made on the text before
    stop_keeping(*context, context->configurator->keeper);
    state.text = text;
    context->configurator->keeper.baseline = text;
    reload(context);
}

void save(const Context& context) {
    if (!anything_is_open(*context))
        return;
    EditState& state = context->edits;
    if (read_text_file(path_from_utf8(state.path)).value_or(std::string()) != state.text)
        reload_after_change(context);
    Shell& configurator = *context->configurator;
    if (configurator.save_disabled)
        return;
    const std::string text = context->app.input_value(configurator.text_editor);
    if (!changed_beneath(*context)) {
        write(context, text);
        return;
    }
    // Others may write once more while the question is open.
    ask_to_overwrite(context, [path = state.path, seen = state.text](const Context& later) {
        if (later->edits.path != path)
            return;
        later->configurator->keeper.begun_on = seen;
        save(later);
    });
}

void restart(const Context& context, const std::string& path, const std::string& text) {
    EditState& state = context->edits;
    if (const auto end_query = std::exchange(state.end_query, nullptr))
        end_query();
    put_edits_aside(context, path);
    state.watched.clear();
    if (std::exchange(state.path, path) == path)
        take_text(context, text);
    else
        show_text(context, text);
}

} // namespace

void set_status(const Context& context, TextStatus status, const std::string& message) {
    Shell& configurator = *context->configurator;
    context->app.set_text(configurator.status_message, message);
    configurator.invalid = status == TextStatus::Invalid;
    context->app.set_state(configurator.status_bar, "Invalid", configurator.invalid);
    context->app.set_data(configurator.text_editor, ""); // the line at fault, if there is one
    configurator.save_disabled = status != TextStatus::Unsaved;
    context->app.set_state(configurator.save_button, "Disabled", configurator.save_disabled);
}

Json start_editing(const Context& context, const std::string& path) {
    const std::string text = read_text_file(path_from_utf8(path)).value_or(std::string());
    restart(context, path, text);
    watch_file(*context, path_from_utf8(path));
    std::optional<Json> document = parse_json(text);
    if (!document)
        return Json::object();
    if (document->is_object())
        resume_edits(context, path, context->edits.pending, *document);
    return std::move(*document);
}

bool shows_disk(const AppContext& context) {
    return read_text_file(path_from_utf8(context.edits.path)) == context.edits.text;
}

void take_written(const Context& context) {
    const std::filesystem::path file = path_from_utf8(context->edits.path);
    take_text(context, read_text_file(file).value_or(std::string()));
    watch_file(*context, file);
}

void stop_editing(const Context& context) {
    restart(context, "", "");
}

void discard_typed_text(const Context& context) {
    if (!text_view_dirty(*context, *context->configurator))
        return;
    stop_keeping(*context, context->configurator->keeper);
    show_text(context, context->edits.text);
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
    context->app.on_click(configurator.save_button, [context] { save(context); });
}

} // namespace Lumenfold
