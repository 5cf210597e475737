#include "app_driver.h"
#include "layers/attributes.h"
#include "layers/engine.h"
#include "layers/object_model.h"
#include "runtime/layer_plan.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

namespace TestSupport {
namespace {

using Corvel::NodeKind;

const std::string CONFIGURATORS = "App/Lumenfold Window/Config Pane/";

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
void click_everything(AppDriver& ui, const std::string& below) {
    for (const auto& [path, uses] : ui.app->path_uses())
        if (uses.contains("click") && path.starts_with(below) && ui.shown(path))
            ui.click(path);
}

void visit_configurator(AppDriver& ui, const std::string& name) {
    const std::string root = CONFIGURATORS + name + "/Editor Panel/";
    for (const auto& [tab, uses] : ui.app->path_uses()) {
        if (!tab.starts_with(root + "Sidebar/") || !uses.contains("click") || !ui.shown(tab))
            continue;
        ui.click(tab);
        click_everything(ui, root + "Panels/");
        click_everything(ui, "App/");
    }
}

/// Uses all of the application, so that it sets and listens to all that it ever does.
void have_a_long_session(AppDriver& ui) {
    const auto site = copy_example(ui.dir / "site");
    ui.start({site, ui.dir / "site/projects/harmonics/.lumenfold-project"});
    visit_configurator(ui, "Project Configurator");
    for (const std::string card : {"proj-0", "proj-1", "proj-2", "proj-3"}) {
        ui.row_action("Left Tabs/config-1", "activate");
        ui.click("Sidebar/Projects Tab");
        if (ui.shown(card))
            ui.row_action(card, "activate");
    }
    visit_configurator(ui, "Project Configurator");
    ui.row_action("Left Tabs/config-1", "activate");
    visit_configurator(ui, "Site Configurator");
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

} // namespace
} // namespace TestSupport
