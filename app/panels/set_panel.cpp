#include "app/panels/set_panel.h"

#include "app/app_context.h"
#include "app/edit_state.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/editing/file_editor.h"
#include "app/editing/reload.h"
#include "app/node_state.h"
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

std::string entry_label(const SetPanel& panel, const Json& entry, std::size_t position) {
    for (const char* key : {panel.label_key.c_str(), "slug"})
        if (std::string label = text_at(entry, key); !label.empty())
            return label;
    return panel.numbered + std::to_string(position + 1);
}

void fill_combo(Corvel::CorvelApp& app, const SetPanel& panel, const Json& entries) {
    std::vector<Corvel::ComboItem> items;
    for (std::size_t i = 0; i < panel.selection.count; ++i)
        items.push_back({std::to_string(i), entry_label(panel, entries[i], i)});
    app.set_options(panel.path + ITEM_COMBO, std::move(items));
    app.set_selected(panel.path + ITEM_COMBO, std::to_string(panel.selection.index));
}

/// Shows another entry; what the file editor holds is given up, what the others hold is not.
void commit_selection(const Context& context, SetPanel& panel, std::size_t index) {
    flush_edits(context);
    panel.selection.index = index;
    load_file_editor(context->app, *panel.editor, "");
    reload_after_change(context);
}

void select(const Context& context, const std::shared_ptr<SetPanel>& panel,
            const std::string& value) {
    std::size_t index = 0;
    const char* end = value.data() + value.size();
    const auto [rest, error] = std::from_chars(value.data(), end, index);
    SetSelection& selection = panel->selection;
    if (error != std::errc() || rest != end || index == selection.index || index >= selection.count)
        return;
    if (!file_editor_dirty(context->app, *panel->editor)) {
        commit_selection(context, *panel, index);
        return;
    }
    context->app.set_selected(panel->path + ITEM_COMBO, std::to_string(selection.index));
    context->confirm_dialog.show(
        "Discard changes?", panel->discard_message, "Discard",
        [panel, index](const Context& later) { commit_selection(later, *panel, index); });
}

void edit_field(const Context& context, SetPanel& panel, const std::string& key,
                const std::string& text) {
    if (panel.selection.index >= panel.selection.count)
        return;
    panel.queue(context, panel.pointer_root + std::to_string(panel.selection.index) + "/" + key,
                text);
    if (key == panel.file_key)
        load_file_editor(context->app, *panel.editor, panel.resolve(*context, text));
}

} // namespace

void fill_set_panel(const Context& context, SetPanel& panel, const Json& entries) {
    Corvel::CorvelApp& app = context->app;
    SetSelection& selection = panel.selection;
    selection.count = entries.is_array() ? entries.size() : 0;
    selection.index = std::min(selection.index, selection.count ? selection.count - 1 : 0);
    fill_combo(app, panel, entries);
    for (const std::string& node : {META_FORM, FILE_STATUS_BAR, FILE_EDITOR, REMOVE_BUTTON})
        app.set_visible(panel.path + node, selection.count > 0);
    set_state(app, panel.path, "Empty", selection.count == 0);
    if (selection.count == 0) {
        selection.slug.clear();
        load_file_editor(app, *panel.editor, "");
        return;
    }
    const Json& entry = entries[selection.index];
    selection.slug = text_at(entry, "slug");
    for (const SetField& field : panel.fields)
        fill_editor(app, set_field_path(panel, field.key), text_at(entry, field.key.c_str()));
    load_file_editor(app, *panel.editor,
                     panel.resolve(*context, text_at(entry, panel.file_key.c_str())));
}

void wire_set_panel(const Context& context, const std::shared_ptr<SetPanel>& panel) {
    wire_file_editor(context->app, panel->editor);
    context->app.on_select(panel->path + ITEM_COMBO, [context, panel](const std::string& value) {
        select(context, panel, value);
    });
    for (const SetField& field : panel->fields)
        context->app.on_input(set_field_path(*panel, field.key),
                              [context, panel, key = field.key](const std::string& text) {
                                  edit_field(context, *panel, key, text);
                              });
}

std::string set_field_path(const SetPanel& panel, const std::string& key) {
    const auto field = std::find_if(panel.fields.begin(), panel.fields.end(),
                                    [&](const SetField& row) { return row.key == key; });
    return field == panel.fields.end() ? std::string() : panel.path + META_FORM + field->node;
}

} // namespace Lumenfold
