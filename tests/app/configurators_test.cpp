// What a new panel or dialog is easily left without: a row in the table of sections, a tab, a place
// in the styles, a way to leave it.
#include "app/project_panels/project_configurator.h"
#include "app/site_panels/site_configurator.h"
#include "app_driver.h"
#include "layers/engine.h"
#include "layers/style_reader.h"
#include "runtime/layer_plan.h"

#include <gtest/gtest.h>

namespace TestSupport {
namespace {

using Lumenfold::Section;

struct Case {
    const char* name;
    Lumenfold::ConfiguratorParts (*parts)();
    const char* file;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.name;
}

struct Configurators : testing::TestWithParam<Case> {
    Configurators()
        : parts(GetParam().parts()) {}

    AppDriver ui;
    const Lumenfold::ConfiguratorParts parts;

    std::string tab(const Section& section) const {
        return parts.root + "/Editor Panel/Sidebar/" + section.tab;
    }
    std::string panel(const Section& section) const {
        return parts.root + "/Editor Panel/Panels/" + section.panel;
    }
};

std::set<std::string> children_in_styles(AppDriver& ui, const std::string& path) {
    std::set<std::string> names;
    for (const Layers::LLayer* child :
         Corvel::template_children(*ui.app->engine().find_layer(path)))
        names.insert(child->name());
    return names;
}

/// Says which names one side has alone.
void expect_same(const std::set<std::string>& styles, const std::set<std::string>& table,
                 const std::string& kind) {
    for (const std::string& name : styles)
        EXPECT_TRUE(table.contains(name))
            << "the styles have the " << kind << " '" << name
            << "', which has no row in the configurator's table of sections";
    for (const std::string& name : table)
        EXPECT_TRUE(styles.contains(name)) << "the table of sections names the " << kind << " '"
                                           << name << "', which the styles do not have";
}

TEST_P(Configurators, TableAndStylesNameTheSameTabsAndPanels) {
    std::set<std::string> tabs;
    std::set<std::string> panels;
    for (const Section& section : parts.sections) {
        EXPECT_TRUE(tabs.insert(section.tab).second) << section.tab << " stands twice";
        EXPECT_TRUE(panels.insert(section.panel).second) << section.panel << " stands twice";
        EXPECT_TRUE(section.wire || section.fill) << section.panel << " does nothing";
    }
    expect_same(children_in_styles(ui, parts.root + "/Editor Panel/Sidebar"), tabs, "tab");
    expect_same(children_in_styles(ui, parts.root + "/Editor Panel/Panels"), panels, "panel");
}

TEST_P(Configurators, EachTabShowsItsPanelAlone) {
    write_file(ui.dir / GetParam().file, R"({"slug": "p", "title": "T"})");
    ui.start({ui.dir / GetParam().file});
    for (const Section& chosen : parts.sections) {
        ui.click(tab(chosen));
        for (const Section& section : parts.sections) {
            const bool is_chosen = &section == &chosen;
            EXPECT_EQ(ui.shown(panel(section)), is_chosen)
                << section.panel << " after a click on " << chosen.tab;
            EXPECT_EQ(ui.has_state(tab(section), "Active"), is_chosen)
                << section.tab << " after a click on " << chosen.tab;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Both, Configurators,
    testing::Values(Case{"Site", Lumenfold::site_configurator_parts, ".lumenfold-site"},
                    Case{"Project", Lumenfold::project_configurator_parts, ".lumenfold-project"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(Dialogs, AreHiddenAtFirstAndCanBeLeft) {
    AppDriver ui;
    ui.start();
    int count = 0;
    for (const std::string& name : children_in_styles(ui, "App")) {
        const std::string dialog = "App/" + name;
        const Layers::LLayer* layer = ui.app->engine().find_layer(dialog);
        if (Layers::read_node_style(layer, {}).overlay != "Modal")
            continue;
        EXPECT_FALSE(ui.shown(dialog)) << "nothing hides " << dialog << " at the start";
        if (name.starts_with("Theme ") || name.starts_with("Update ")) // wired with the settings
            continue;
        ui.app->set_visible(dialog, true);
        ui.advance(0);
        EXPECT_NO_THROW(ui.click(dialog + "/Titlebar/Exit Button"));
        EXPECT_FALSE(ui.shown(dialog)) << "its Exit Button does not hide " << dialog;
        ++count;
    }
    EXPECT_GT(count, 0);
}

} // namespace
} // namespace TestSupport
