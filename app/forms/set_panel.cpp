#include "app/forms/set_panel.h"

#include "app/context/app_context.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/editing/file_editor.h"
#include "app/editing/reload.h"
#include "app/forms/removal.h"
#include "runtime/corvel_app.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <utility>

namespace Lumenfold {

namespace {

const std::string ITEM_COMBO = "/Selector Row/Item Combo";
const std::string REMOVE_BUTTON = "/Selector Row/Remove Button";
const std::string META_FORM = "/Meta Form";
const std::string FILE_STATUS_BAR = "/File Status Bar";
const std::string FILE_EDITOR = "/File Editor";

std::string entry_label(const SetPanel& panel, const std::string& label, const std::string& slug,
                        std::size_t position) {
    if (!label.empty())
        return label;
    return slug.empty() ? panel.numbered + std::to_string(position + 1) : slug;
}

void show_labels(Corvel::CorvelApp& app, const SetPanel& panel, const SetState& state) {
    std::vector<Corvel::ComboItem> items;
    for (std::size_t i = 0; i < state.labels.size(); ++i)
        items.push_back({std::to_string(i), state.labels[i]});
    app.set_options(panel.path + ITEM_COMBO, std::move(items));
    app.set_selected(panel.path + ITEM_COMBO, std::to_string(state.index));
}

void fill_combo(Corvel::CorvelApp& app, const SetPanel& panel, SetState& state,
                const Json& entries) {
    state.labels.clear();
    for (std::size_t i = 0; i < state.count; ++i)
        state.labels.push_back(entry_label(panel, text_at(entries[i], panel.label_key.c_str()),
                                           text_at(entries[i], "slug"), i));
    show_labels(app, panel, state);
}

/// Shows another entry; unsaved text of `given_up` is given up, that of other files is not.
void commit_selection(const Context& context, const SetPanel& panel, std::size_t index,
                      const std::string& given_up) {
    SetState& state = panel.state(*context);
    flush_edits(context);
    if (state.editor.path == given_up) // else others changed the list while the question was open
        discard_shown_text(context, state.editor);
    state.index = index;
    reload_after_change(context);
}

void select(const Context& context, const SetPanel& panel, const std::string& value) {
    std::size_t index = 0;
    const char* end = value.data() + value.size();
    const auto [rest, error] = std::from_chars(value.data(), end, index);
    const SetState& state = panel.state(*context);
    if (error != std::errc() || rest != end || index == state.index || index >= state.count)
        return;
    if (!file_editor_dirty(*context, state.editor)) {
        commit_selection(context, panel, index, state.editor.path);
        return;
    }
    context->app.set_selected(panel.path + ITEM_COMBO, std::to_string(state.index));
    context->confirm_dialog.show("Discard changes?", panel.discard_message, "Discard",
                                 [&panel, index, file = state.editor.path](const Context& later) {
                                     commit_selection(later, panel, index, file);
                                 });
}

void edit_field(const Context& context, const SetPanel& panel, const std::string& key,
                const std::string& text) {
    SetState& state = panel.state(*context);
    if (state.index >= state.count)
        return;
    panel.queue(context, panel.pointer_root + std::to_string(state.index) + "/" + key, text);
    if (key == panel.file_key)
        load_file_editor(context, state.editor, panel.dialog.resolve(*context, text));
    if (key == panel.label_key) {
        state.labels[state.index] = entry_label(panel, text, state.slug, state.index);
        show_labels(context->app, panel, state);
    }
}

void ask_to_remove(const Context& context, const SetPanel& panel) {
    const SetState& state = panel.state(*context);
    if (!anything_is_open(*context) || state.index >= state.count)
        return;
    ShownRecord shown{state.index, {{"slug", state.slug}}};
    for (const SetField& field : panel.fields)
        shown.texts.emplace_back(field.key,
                                 context->app.input_value(set_field_path(panel, field.key)));
    std::string question = panel.removal_question(*context);
    if (file_editor_dirty(*context, state.editor))
        question += " Its unsaved text goes.";
    confirm_removal(context, panel.removal_title, question,
                    [&panel, shown, file = state.editor.path](const Context& later) {
                        FileEditor& editor = panel.state(*later).editor;
                        const Result removed = panel.remove(*later, shown);
                        if (removed && editor.path == file)
                            discard_shown_text(later, editor);
                        return removed;
                    });
}

} // namespace

void fill_set_panel(const Context& context, const SetPanel& panel, const Json& entries) {
    Corvel::CorvelApp& app = context->app;
    SetState& state = panel.state(*context);
    state.count = entries.is_array() ? entries.size() : 0;
    state.index = std::min(state.index, state.count ? state.count - 1 : 0);
    fill_combo(app, panel, state, entries);
    for (const std::string& node : {META_FORM, FILE_STATUS_BAR, FILE_EDITOR, REMOVE_BUTTON})
        app.set_visible(panel.path + node, state.count > 0);
    if (!state.editor.problem.empty())
        app.set_visible(panel.path + FILE_STATUS_BAR, true);
    app.set_state(panel.path, "Empty", state.count == 0);
    if (state.count == 0) {
        state.slug.clear();
        load_file_editor(context, state.editor, "");
        return;
    }
    const Json& entry = entries[state.index];
    state.slug = text_at(entry, "slug");
    for (const SetField& field : panel.fields)
        fill_editor(app, set_field_path(panel, field.key), text_at(entry, field.key.c_str()));
    load_file_editor(context, state.editor,
                     panel.dialog.resolve(*context, text_at(entry, panel.file_key.c_str())));
}

void wire_set_panel(const Context& context, const SetPanel& panel) {
    Corvel::CorvelApp& app = context->app;
    wire_file_editor(context, panel.state(*context).editor, panel.path + FILE_STATUS_BAR,
                     panel.path + FILE_EDITOR, panel.missing_text);
    app.on_select(panel.path + ITEM_COMBO,
                  [context, &panel](const std::string& value) { select(context, panel, value); });
    for (const SetField& field : panel.fields)
        app.on_input(set_field_path(panel, field.key),
                     [context, &panel, key = field.key](const std::string& text) {
                         edit_field(context, panel, key, text);
                     });
    app.on_click(panel.path + REMOVE_BUTTON, [context, &panel] { ask_to_remove(context, panel); });
    wire_add_set_dialog(context, panel.dialog);
}

std::string set_field_path(const SetPanel& panel, const std::string& key) {
    const auto field = std::find_if(panel.fields.begin(), panel.fields.end(),
                                    [&](const SetField& row) { return row.key == key; });
    return field == panel.fields.end() ? std::string() : panel.path + META_FORM + field->node;
}

} // namespace Lumenfold
