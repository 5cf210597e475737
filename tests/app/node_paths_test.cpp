#include "app_driver.h"
#include "layers/attributes.h"
#include "layers/engine.h"
#include "layers/object_model.h"
#include "runtime/layer_plan.h"
#include "site_paths.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <sstream>

namespace TestSupport {
namespace {

using Corvel::NodeKind;

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
    if (use == "input" || use == "input value")
        return kind == NodeKind::Editor;
    if (use == "select" || use == "options")
        return kind == NodeKind::ComboBox;
    if (use == "source" || use == "height")
        return kind == NodeKind::Image || kind == NodeKind::Icon;
    if (use == "text")
        return kind == NodeKind::Text || kind == NodeKind::Button || kind == NodeKind::Editor ||
               kind == NodeKind::Markdown;
    if (use == "click")
        return path.ends_with("Checkbox") ? kind == NodeKind::CheckBox : kind == NodeKind::Button;
    return true;
}

/// Clicks whatever has a handler and is on screen, in the order of the paths.
void click_everything(AppDriver& ui, const std::string& below) {
    for (const auto& [path, uses] : ui.app->path_uses())
        if (uses.contains("click") && path.starts_with(below) && ui.shown(path))
            ui.click(path);
}

void visit_configurator(AppDriver& ui, const std::string& root) {
    const std::string sidebar = root + "/Editor Panel/Sidebar/";
    for (const auto& [tab, uses] : ui.app->path_uses()) {
        if (!tab.starts_with(sidebar) || !uses.contains("click") || !ui.shown(tab))
            continue;
        ui.click(tab);
        click_everything(ui, root + "/Editor Panel/Panels/");
        click_everything(ui, "App/");
    }
}

/// Everything that the application ever set or listened to, found by using all of it.
Corvel::CorvelApp::PathUses uses_of_a_long_session(AppDriver& ui) {
    const auto site = copy_example(ui.dir / "site");
    ui.start({site, ui.dir / "site/projects/harmonics/.lumenfold-project"});
    visit_configurator(ui, PROJECT);
    ui.row_action(left_tab(1), "activate");
    ui.click(section_tab("Projects"));
    for (const std::string& card : ui.rows(PROJECTS + "/Project Cards")) {
        ui.row_action(left_tab(1), "activate");
        ui.click(section_tab("Projects"));
        ui.row_action(PROJECTS + "/Project Cards/" + card, "activate");
    }
    visit_configurator(ui, PROJECT);
    ui.row_action(left_tab(1), "activate");
    visit_configurator(ui, SITE);
    ui.advance(1000);
    return ui.app->path_uses();
}

TEST(NodePaths, ResolveInTheStylesWithTheirKindAndLists) {
    AppDriver ui;
    const auto uses = uses_of_a_long_session(ui);
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

TEST(NodePaths, EveryDialogStartsHidden) {
    AppDriver ui;
    ui.start();
    for (const char* dialog :
         {"New Website", "Message", "Confirm", "Add Policy", "Add Section", "Edit Section",
          "Add Social", "Add Project", "Promote", "Add Topic", "Add Dependency", "Add Fact",
          "Add Download", "Theme Directories", "Update"}) {
        const std::string path = std::string("App/") + dialog + " Dialog";
        EXPECT_NE(ui.app->engine().find_layer(path), nullptr) << path;
        EXPECT_FALSE(ui.shown(path)) << path;
    }
    EXPECT_TRUE(ui.shown(HOME));
}

} // namespace
} // namespace TestSupport
