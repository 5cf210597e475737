// Runs tests/runtime/cases: the application's style file, then lines "> command path" or
// "> command path = value". "tree" shows a node and what is below it. A line "- ..." is not
// followed by a render as the others are; for "+ ..." its patches are shown.

#include "runtime/app_fixture.h"
#include "support/case_file.h"

namespace Corvel {
namespace {

using TestSupport::TestApp;

/// "name (kind)" and what differs from the defaults, a node a line.
std::string show(const RenderNode& node, const std::string& indent = "") {
    static const char* const kinds[] = {"Box",   "Text",  "Button",   "Icon",     "Editor",
                                        "Image", "Video", "Markdown", "QR",       "Check Box",
                                        "Link",  "Host",  "Scanner",  "Combo Box"};
    static const std::pair<const char*, std::string NodeStyle::*> texts[] = {
        {"source", &NodeStyle::source},
        {"effective", &NodeStyle::effective_source},
        {"href", &NodeStyle::href},
        {"data", &NodeStyle::data},
        {"placeholder", &NodeStyle::placeholder},
        {"color", &NodeStyle::text_color},
        {"second", &NodeStyle::secondary_text_color}};
    static const std::pair<const char*, double NodeStyle::*> numbers[] = {
        {"width", &NodeStyle::width},
        {"height", &NodeStyle::height},
        {"max", &NodeStyle::max_width},
        {"aspect", &NodeStyle::aspect_ratio},
        {"left", &NodeStyle::margin_left},
        {"grow", &NodeStyle::layout_grow},
        {"opacity", &NodeStyle::opacity},
        {"border", &NodeStyle::border_thickness},
        {"shrink", &NodeStyle::layout_shrink},
        {"font", &NodeStyle::font_size},
        {"spacing", &NodeStyle::layout_spacing},
        {"radius", &NodeStyle::radius_bottom_right}};
    static const std::pair<const char*, bool NodeStyle::*> flags[] = {
        {"visible", &NodeStyle::visible},
        {"wrap", &NodeStyle::wrap},
        {"collapsed", &NodeStyle::collapsed}};
    const NodeStyle& style = node.style;
    const NodeStyle defaults;
    std::ostringstream out;
    out << indent << node.name.get() << " (" << kinds[static_cast<int>(node.kind)] << ")";
    if (!node.text.get().empty())
        out << " '" << node.text.get() << "'";
    for (const ComboItem& item : node.items)
        out << (item.value == node.selected.get() ? " *" : " ") << item.value;
    for (const auto& [name, field] : texts)
        if (style.*field != defaults.*field)
            out << ' ' << name << '=' << style.*field;
    for (const auto& [name, field] : numbers)
        if (style.*field != defaults.*field)
            out << ' ' << name << '=' << style.*field;
    for (const auto& [name, field] : flags)
        if (style.*field != defaults.*field)
            out << (style.*field ? " " : " not-") << name;
    for (const auto& [name, fill] :
         {std::pair(" fill=", style.fill), {" border-fill=", style.border_fill}})
        if (!fill.text.empty())
            out << name << fill.text << (fill.gradient ? " (gradient)" : "");
    out << '\n';
    for (const RenderNode& child : node.children)
        out << show(child, indent + "  ");
    return out.str();
}

/// Rows from "id key=value, key=value; id; ...".
std::vector<ListEntry> rows_from(const std::string& text) {
    std::vector<ListEntry> rows;
    std::istringstream entries(text);
    for (std::string entry; std::getline(entries, entry, ';');) {
        entry.erase(0, entry.find_first_not_of(' '));
        std::istringstream words(entry);
        ListEntry& row = rows.emplace_back();
        std::getline(words, row.id, ' ');
        for (std::string field; std::getline(words >> std::ws, field, ',');)
            row.fields[field.substr(0, field.find('='))] = field.substr(field.find('=') + 1);
    }
    return rows;
}

/// An application that tells what its handlers hear.
class Stage : public TestApp {
public:
    explicit Stage(const std::string& interface)
        : TestApp(interface) {
        app.on_any_row_click = row_teller("clicked");
        app.on_select("App/C", [this](const std::string& value) { tell("chose " + value); });
        app.theme_write = [this](const std::string& name) { tell("wrote " + name); };
        app.scan_status_hook = [this](const std::string& path, const std::string& text) {
            tell("status " + path + " " + text);
        };
    }

    void tell(const std::string& line) { told += line + "\n"; }
    void tell_change(bool changed) { tell(changed ? "changed" : "same"); }
    CorvelApp::RowHandler row_teller(const std::string& word) {
        return [this, word](const auto& key, const auto& item, const auto& action) {
            tell(word + " " + key + "|" + item + "|" + action);
        };
    }

    std::string told;
};

using Command = std::function<void(Stage& app, const std::string& path, const std::string& value)>;

const std::map<std::string, Command> commands = {
    {"text", [](auto& app, auto& path, auto& value) { app->set_text(path, value); }},
    {"source", [](auto& app, auto& path, auto& value) { app->set_source(path, value); }},
    {"href", [](auto& app, auto& path, auto& value) { app->set_href(path, value); }},
    {"data", [](auto& app, auto& path, auto& value) { app->set_data(path, value); }},
    {"height", [](auto& app, auto& path, auto& value) { app->set_height(path, std::stod(value)); }},
    {"hide", [](auto& app, auto& path, auto&) { app->set_visible(path, false); }},
    {"show", [](auto& app, auto& path, auto&) { app->set_visible(path, true); }},
    {"state", [](auto& app, auto& path, auto& value) { app->add_state(path, value); }},
    {"no-state", [](auto& app, auto& path, auto& value) { app->remove_state(path, value); }},
    {"options",
     [](auto& app, auto& path, auto& value) {
         std::vector<ComboItem> items;
         std::istringstream words(value);
         for (std::string word; words >> word;)
             items.push_back({word, ""});
         app->set_options(path, items);
     }},
    {"select",
     [](auto& app, auto& path, auto& value) {
         app->set_selected(path, value);
         EXPECT_EQ(app->selected(path), app.node(path).selected.get());
     }},
    {"event", [](auto& app, auto& path, auto& value) { app->dispatch_event(path, value); }},
    {"global", [](auto& app, auto& state, auto&) { app->add_global_state(state); }},
    {"rows", [](auto& app, auto& key, auto& value) { app->set_rows(key, rows_from(value)); }},
    {"add-theme",
     [](auto& app, auto& name, auto& members) {
         EXPECT_EQ(
             app->add_theme_text(TestSupport::theme_text(name, members)).substr(0, name.size()),
             name);
     }},
    {"theme",
     [](auto& app, auto& name, auto&) { app.tell(app->set_theme(name) ? "taken" : "refused"); }},
    {"remove-theme",
     [](auto& app, auto& name, auto&) { app.tell(app->remove_theme(name) ? "taken" : "refused"); }},
    {"mobile-scales",
     [](auto& app, auto&, auto&) {
         app->mobile_icon_scale = 3;
         app->mobile_font_scale = 4;
         app->mobile_size_scale = 2;
     }},
    {"viewport-width", [](auto& app, auto& width,
                          auto&) { app.tell_change(app->set_viewport_width(std::stod(width))); }},
    {"viewport-height",
     [](auto& app, auto& height, auto&) {
         app.tell_change(app->set_viewport_height(std::stod(height)));
     }},
    {"hide-controls",
     [](auto& app, auto&, auto&) { app.tell_change(app->set_controls_hidden(true)); }},
    {"scroll",
     [](auto& app, auto& by, auto&) { app.tell_change(app->accumulate_scroll(std::stod(by))); }},
    {"root", [](auto& app, auto& path, auto&) { app->set_root(path); }},
    {"render", [](auto&, auto&, auto&) {}},
    {"editor-text",
     [](auto& app, auto& path, auto& value) { app->queue_editor_text(path, value); }},
    {"list-keys",
     [](auto& app, auto&, auto&) {
         for (const std::string& key : app->list_keys())
             app.tell(key);
     }},
    {"checked",
     [](auto& app, auto& path, auto&) { app.tell(app->is_checked(path) ? "checked" : "not"); }},
    {"input",
     [](auto& app, auto& path, auto&) {
         const std::string read = app->input_value(path); // which must not make it
         app.tell(app->has_input_value(path) ? "'" + read + "'" : "none");
     }},
    {"set-input", [](auto& app, auto& path, auto& value) { app->set_input_value(path, value); }},
    {"on-click",
     [](auto& app, auto& path, auto&) {
         app->on_click(path, [&app, path] {
             app.tell("click " + path + (app->is_checked(path) ? " checked" : ""));
         });
     }},
    {"on-scan",
     [](auto& app, auto& path, auto&) {
         app->on_scan(path, [&app](const std::string& text) { app.tell("scan " + text); });
     }},
    {"no-handlers",
     [](auto& app, auto& path, auto&) {
         app->on_click(path, nullptr);
         app->on_scan(path, nullptr);
         app->on_input(path, nullptr);
     }},
    {"on-row", [](auto& app, auto& key, auto&) { app->on_row_click(key, app.row_teller("own")); }},
    {"off-row", [](auto& app, auto& key, auto&) { app->on_row_click(key, nullptr); }},
    {"on-any-row",
     [](auto& app, auto&, auto&) { app->on_any_row_click = app.row_teller("clicked"); }},
    {"off-any-row", [](auto& app, auto&, auto&) { app->on_any_row_click = nullptr; }},
    {"click", [](auto& app, auto& path, auto&) { app->dispatch_event(path, "click"); }},
};

std::string run(const std::string& input) {
    const std::size_t script =
        std::min({input.find("\n> "), input.find("\n- "), input.find("\n+ ")}) + 1;
    Stage app(input.substr(0, script));
    std::istringstream lines(input.substr(script));
    for (std::string line; std::getline(lines, line);) {
        const std::string command = line.substr(2, line.find(' ', 2) - 2);
        const std::string rest = line.substr(std::min(command.size() + 3, line.size()));
        const std::size_t equals = std::min(rest.find(" ="), rest.size());
        const std::string path = rest.substr(0, equals);
        const std::string value = rest.substr(std::min(equals + 3, rest.size()));
        if (command == "tree")
            app.told += show(app.node(path));
        else
            TestSupport::verb_of(commands, command)(app, path, value);
        if (line[0] == '+')
            app.tell("patches: " + TestSupport::patches_text(app->render_patches()));
        else if (line[0] == '>')
            app->render_patches(); // so that each command meets what earlier renders remember
    }
    return app.told;
}

[[maybe_unused]] const bool renders =
    TestSupport::register_cases("Render", "tests/runtime/cases/render.txt", run);
[[maybe_unused]] const bool events =
    TestSupport::register_cases("RenderEvents", "tests/runtime/cases/events.txt", run);

} // namespace
} // namespace Corvel
