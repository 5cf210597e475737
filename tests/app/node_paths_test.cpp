#include "app_driver.h"
#include "layers/engine.h"
#include "layers/object_model.h"
#include "layers/style_reader.h"
#include "runtime/layer_plan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <sstream>

namespace TestSupport {
namespace {

using Corvel::NodeKind;

const std::string WINDOW = "App/Lumenfold Window/";
const std::string CONFIGURATORS = WINDOW + "Config Pane/";

/// The list that a layer shows; empty if it shows none.
std::string list_key(const Layers::LLayer& layer) {
    const std::string bind = Layers::read_node_style(&layer, {}).bind;
    return bind.starts_with("List:") ? bind.substr(5) : std::string();
}

/// The layer that a node path is made from; null if there is none. The rows of a list are all made
/// from its template.
const Layers::LLayer* resolve(const Layers::LLayer& root, const std::string& path) {
    const Layers::LLayer* layer = nullptr;
    std::vector<const Layers::LLayer*> candidates = Corvel::template_children(root);
    bool in_list = false;
    std::istringstream names(path);
    for (std::string name; std::getline(names, name, '/');) {
        layer = nullptr;
        for (const Layers::LLayer* candidate : candidates)
            if (!layer && (in_list || candidate->name() == name))
                layer = candidate;
        if (!layer)
            return nullptr;
        candidates = Corvel::template_children(*layer);
        in_list = !list_key(*layer).empty();
    }
    return layer;
}

void collect_list_keys(const Layers::LLayer& layer, std::set<std::string>& keys) {
    if (const std::string key = list_key(layer); !key.empty())
        keys.insert(key);
    for (const Layers::LLayer* child : Corvel::template_children(layer))
        collect_list_keys(*child, keys);
}

bool kind_serves(NodeKind kind, const std::string& use, const std::string& path) {
    using enum NodeKind;
    static const std::map<std::string, std::set<NodeKind>> kinds = {
        {"input", {Editor}},
        {"input value", {Editor}},
        {"select", {ComboBox}},
        {"options", {ComboBox}},
        {"source", {Image, Icon}},
        {"height", {Image, Icon}},
        {"text", {Text, Button, Editor, Markdown}}};
    if (use == "click")
        return kind == (path.ends_with("Checkbox") ? CheckBox : Button);
    const auto serving = kinds.find(use);
    return serving == kinds.end() || serving->second.contains(kind);
}

/// Clicks whatever has a handler and is on screen, in the order of the paths.
void click_everything(AppDriver& ui, const std::function<bool(const std::string&)>& matches) {
    for (const auto& [path, uses] : ui.app->path_uses())
        if (uses.contains("click") && matches(path) && ui.shown(path))
            ui.click(path);
}

void visit_configurator(AppDriver& ui, const std::string& name) {
    const std::string root = CONFIGURATORS + name + "/Editor Panel/";
    const auto in_panel = [&](const std::string& path) {
        return path.starts_with(root + "Panels/");
    };
    const auto in_dialog = [](const std::string& path) { return !path.starts_with(WINDOW); };
    for (const auto& [tab, uses] : ui.app->path_uses()) {
        if (!tab.starts_with(root + "Sidebar/") || !uses.contains("click") || !ui.shown(tab))
            continue;
        ui.click(tab);
        click_everything(ui, in_panel);
        click_everything(ui, in_dialog);
    }
}

/// Uses all of the application, so that it sets and listens to all that it ever does.
void have_a_long_session(AppDriver& ui) {
    const auto site = copy_example(ui.dir / "site");
    ui.start({site, ui.dir / "site/projects/harmonics/.lumenfold-project"});
    const FakePlatform::Process listing = ui.platform.processes.back();
    listing.on_line("R\t1.0\t1.0.0\t\tpending\t1");
    listing.on_exit(0);
    visit_configurator(ui, "Project Configurator");
    const std::vector<FakePlatform::Process> running = ui.platform.processes;
    for (const FakePlatform::Process& process : running)
        process.on_exit(0);
    for (const std::string card : {"proj-0", "proj-1", "proj-2", "proj-3"}) {
        ui.row_action("Left Tabs/config-1", "activate");
        ui.click("Sidebar/Projects Tab");
        if (ui.shown(card))
            ui.row_action(card, "activate");
    }
    visit_configurator(ui, "Project Configurator");
    ui.row_action("Left Tabs/config-1", "activate");
    visit_configurator(ui, "Site Configurator");
    ui.click("Right Tabs/App Tab");
    ui.click("Home/New Website Button");
    ui.advance(1000);
}

TEST(NodePaths, ResolveInTheStylesWithTheirKindAndLists) {
    AppDriver ui;
    have_a_long_session(ui);
    const auto uses = ui.app->path_uses();
    EXPECT_GT(uses.size(), 200u); // the session reached the panels
    const Layers::LLayer& root = ui.app->engine().root();
    for (const auto& [path, words] : uses) {
        const Layers::LLayer* layer = resolve(root, path);
        if (!layer) {
            ADD_FAILURE() << "no layer for " << path;
            continue;
        }
        for (const std::string& use : words)
            EXPECT_TRUE(kind_serves(Corvel::node_kind_of(layer), use, path)) << path << ": " << use;
    }
    std::set<std::string> bound;
    collect_list_keys(*ui.app->engine().find_layer("App"), bound);
    EXPECT_EQ(ui.app->list_keys(), bound);
}

/// Calls `visit` with every layer below `path` that stands for one node, in reading order.
void visit_nodes(const Layers::LLayer& layer, const std::string& path,
                 const std::function<void(const Layers::LLayer&, const std::string&)>& visit) {
    visit(layer, path);
    if (!list_key(layer).empty())
        return;
    for (const Layers::LLayer* child : Corvel::template_children(layer))
        visit_nodes(*child, path + "/" + child->name(), visit);
}

/// Whether the application does something with a node that people use.
bool is_in_use(const Layers::LLayer& layer, const std::set<std::string>& uses) {
    const auto any_of = [&](std::initializer_list<const char*> words) {
        return std::any_of(words.begin(), words.end(),
                           [&](const char* word) { return uses.contains(word); });
    };
    switch (Corvel::node_kind_of(&layer)) {
    case NodeKind::Editor:
        return any_of({"input", "input value", "text"});
    case NodeKind::ComboBox:
        return uses.contains("select");
    case NodeKind::Button:
        return uses.contains("click") || !Layers::read_node_style(&layer, {}).intent.empty();
    default:
        return true;
    }
}

TEST(NodePaths, WhatPeopleUseIsWired) {
    AppDriver ui;
    have_a_long_session(ui);
    const auto uses = ui.app->path_uses();
    const auto check = [&](const Layers::LLayer& layer, const std::string& path) {
        const auto found = uses.find(path);
        const bool in_use =
            is_in_use(layer, found == uses.end() ? std::set<std::string>() : found->second);
        EXPECT_TRUE(in_use) << path << " is in the styles, but no code uses it";
    };
    const Layers::LLayer& app = *ui.app->engine().find_layer("App");
    for (const Layers::LLayer* child : Corvel::template_children(app)) {
        const std::string& name = child->name();
        if (name.starts_with("Theme ") || name.starts_with("Update ")) // wired with the settings
            continue;
        if (name != "Lumenfold Window")
            visit_nodes(*child, "App/" + name, check);
    }
    for (const std::string pane : {"App Pane", "Config Pane"}) {
        const std::string path = WINDOW + pane;
        visit_nodes(*ui.app->engine().find_layer(path), path, check);
    }
}

} // namespace
} // namespace TestSupport
