#include "app/editing/text_view.h"

#include "app/app_context.h"
#include "app/editing/editor_text.h"
#include "app/editing/reload.h"
#include "app/node_state.h"
#include "runtime/corvel_app.h"
#include "site/json_file.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace Lumenfold {

namespace {

/// The status line's words on a text that does not parse: the line (from 1) and the parser's words
/// without their prefix.
std::string describe(const JsonError& error, const std::string& text) {
    const std::size_t before = error.byte > 1 ? std::min(error.byte - 1, text.size()) : 0;
    const auto line =
        1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(before), '\n');
    const std::size_t prefix = error.message.find(": ");
    const std::string detail =
        prefix == std::string::npos ? error.message : error.message.substr(prefix + 2);
    return "Invalid JSON — line " + std::to_string(line) + ": " + detail;
}

void judge_text(const Context& context, const std::string& text) {
    if (context->edits.path.empty())
        return;
    JsonError error;
    if (text == context->edits.text)
        set_status(context, TextStatus::Clean, "");
    else if (parse_json(text, &error))
        set_status(context, TextStatus::Unsaved, "Unsaved changes");
    else
        set_status(context, TextStatus::Invalid, describe(error, text));
}

void save(const Context& context, const Shell& shell) {
    const EditState& state = context->edits;
    if (shell.save_disabled || state.path.empty())
        return;
    const std::string text = context->app.input_value(shell.text_editor);
    if (parse_json(text) && write_text_file(path_from_utf8(state.path), text))
        reload(context);
}

} // namespace

void set_status(const Context& context, TextStatus status, const std::string& message) {
    Shell& shell = *context->shell;
    context->app.set_text(shell.status_message, message);
    shell.invalid = status == TextStatus::Invalid;
    set_state(context->app, shell.status_bar, "Invalid", shell.invalid);
    shell.save_disabled = status != TextStatus::Unsaved;
    set_state(context->app, shell.save_button, "Disabled", shell.save_disabled);
}

void set_baseline(const Context& context, const std::string& text) {
    context->edits.text = text;
    fill_editor(context->app, context->shell->text_editor, text);
}

void start_editing(const Context& context, const std::string& path, const std::string& text) {
    EditState& state = context->edits;
    state.path = path;
    state.pending.clear();
    state.manifest_pending.clear();
    set_baseline(context, text);
    set_status(context, TextStatus::Clean, "");
}

bool text_view_dirty(const AppContext& context, const Shell& shell) {
    return !context.edits.path.empty() &&
           context.app.input_value(shell.text_editor) != context.edits.text;
}

void wire_text_view(const Context& context, Shell& shell) {
    context->app.on_input(shell.text_editor,
                          [context](const std::string& text) { judge_text(context, text); });
    context->app.on_click(shell.save_button, [context, &shell] { save(context, shell); });
}

} // namespace Lumenfold
