#include "app/project_panels/facts_panel.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/context/project_state.h"
#include "app/context/window_paths.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/forms/add_dialog.h"
#include "app/forms/removal.h"
#include "app/project_panels/project_files.h"
#include "runtime/corvel_app.h"
#include "site/path_text.h"
#include "site/records.h"
#include "site/versions.h"

#include <nlohmann/json.hpp>

namespace Lumenfold {
namespace {

constexpr const char* LIST = "factRows";
constexpr const char* ROW_PREFIX = "fact-";
constexpr const char* FACTS_FORM = "/Project Panel/Facts Form";
constexpr const char* FACTS_LABEL = "/Project Panel/Facts Label";
constexpr const char* ADD_FACT_BUTTON = "/Project Panel/Add Fact Button";

/// The value of a fact that follows the newest version.
std::string latest_version_text(const ProjectState& state) {
    if (state.latest_label.empty())
        return "Derived from the latest build";
    return state.latest_label +
           (state.latest_date.empty() ? std::string() : " (" + state.latest_date + ")");
}

bool is_derived(const Json& fact) {
    return text_at(fact, "preset") == "stable_release";
}

std::string value_field(const AppContext& context, std::size_t position) {
    return context.project_configurator.panels + FACTS_FORM + "/" + ROW_PREFIX +
           std::to_string(position) + "/Value Field";
}

void fill_row(const Context& context, std::size_t position, const Json& fact) {
    Corvel::CorvelApp& app = context->app;
    const std::string number = std::to_string(position);
    const std::string field = value_field(*context, position);
    const bool derived = is_derived(fact);
    fill_editor(app, field,
                derived ? latest_version_text(context->project) : text_at(fact, "value"));
    // The entries belong to the position, so both ways are set for every row.
    app.set_state(field, "Locked", derived);
    if (derived) {
        app.on_input(field, [](const std::string&) {});
    } else {
        app.on_input(field, [context, number](const std::string& text) {
            queue_edit(context, "/facts/" + number + "/value", text);
        });
    }
}

void remove_fact(const Context& context, const std::string& item) {
    const long position = row_position(item, ROW_PREFIX);
    const Json project = parse_json(context->edits.text).value_or(Json()); // as it is shown
    const Json& facts = array_at(project, "facts");
    if (position < 0 || static_cast<std::size_t>(position) >= facts.size())
        return;
    const auto index = static_cast<std::size_t>(position);
    const std::string label = text_at(facts[index], "label");
    ShownRecord shown{index, {{"label", label}}};
    if (!is_derived(facts[index]))
        shown.texts.emplace_back("value", context->app.input_value(value_field(*context, index)));
    confirm_removal(context, "Remove Fact",
                    "Remove fact '" + (label.empty() ? "this fact" : label) + "'?",
                    [shown](const Context& later) {
                        return remove_record(path_from_utf8(later->edits.path), "facts", shown);
                    });
}

AddDialog make_dialog(const Context& context) {
    AddDialog dialog;
    dialog.path = Paths::ADD_FACT_DIALOG;
    dialog.open_button = context->project_configurator.panels + ADD_FACT_BUTTON;
    dialog.editors = {"/Body/Label Editor", "/Body/Value Editor", "/Body/Href Editor",
                      "/Body/Note Editor"};
    dialog.required = {0, 1};
    dialog.failure_title = "Couldn't Add Fact";
    dialog.available = anything_is_open;
    dialog.add = [](const std::string& config_path, const AddDialogValues& values,
                    std::string* error) {
        return add_fact(path_from_utf8(config_path),
                        {values.texts[0], values.texts[1], values.texts[2], values.texts[3]},
                        error);
    };
    return dialog;
}

} // namespace

void wire_facts(const Context& context) {
    wire_add_dialog(context, make_dialog(context));
    context->app.on_row_click(
        LIST, [context](const std::string&, const std::string& item, const std::string& action) {
            if (action == "remove")
                remove_fact(context, item);
        });
}

void find_latest_version(const Context& context, const Json& project) {
    ProjectState& state = context->project;
    state.latest_label = newest_version(discover_versions(member_folder(*context)));
    state.latest_date.clear();
    for (const Json& version : array_at(project, "versions"))
        if (!state.latest_label.empty() && text_at(version, "label") == state.latest_label) {
            state.latest_date = text_at(version, "release_date");
            return;
        }
}

void refresh_derived_facts(const Context& context) {
    const Json project = parse_or_empty(context->edits.text);
    find_latest_version(context, project);
    const Json& facts = array_at(project, "facts");
    for (std::size_t i = 0; i < facts.size(); ++i)
        if (is_derived(facts[i]))
            fill_editor(context->app, value_field(*context, i),
                        latest_version_text(context->project));
}

void fill_facts(const Context& context, const Json& project) {
    Corvel::CorvelApp& app = context->app;
    const std::string& panels = context->project_configurator.panels;
    const Json& facts = array_at(project, "facts");
    std::vector<Corvel::ListEntry> rows;
    for (std::size_t i = 0; i < facts.size(); ++i)
        rows.push_back({ROW_PREFIX + std::to_string(i), {{"label", text_at(facts[i], "label")}}});
    const bool umbrella = context->project.umbrella;
    app.set_visible(panels + FACTS_LABEL, !rows.empty());
    app.set_visible(panels + FACTS_FORM, !rows.empty() && !umbrella);
    app.set_visible(panels + ADD_FACT_BUTTON, !umbrella);
    app.set_rows(LIST, std::move(rows));
    for (std::size_t i = 0; i < facts.size(); ++i)
        fill_row(context, i, facts[i]);
}

} // namespace Lumenfold
