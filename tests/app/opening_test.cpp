#include "app_driver.h"
#include "site_paths.h"

#include <gtest/gtest.h>

namespace TestSupport {
namespace {

using Names = std::vector<std::string>;

struct Opening : testing::Test {
    AppDriver ui;

    std::filesystem::path make_site(const std::string& name, const std::string& extra = "") {
        const auto file = ui.dir / (name + "/.lumenfold-site");
        write_file(file, R"({"title": ")" + name + R"(", "output": "./output")" + extra + "}");
        return file;
    }
    std::string tab_title(int number) { return ui.text(left_tab(number) + "/Title"); }
};

TEST_F(Opening, EnvironmentOpensEachLineAndReportsTheBadOnes) {
    const auto a = make_site("a");
    const auto b = make_site("b");
    ui.start({a, "", ui.dir / "nothing", b});
    EXPECT_EQ(ui.rows(LEFT_TABS), (Names{"config-1", "config-2"}));
    EXPECT_EQ(ui.text(TITLE_FIELD), "b");
    EXPECT_TRUE(ui.has_state(left_tab(2), "Active"));
    EXPECT_FALSE(ui.has_state(left_tab(1), "Active"));
    EXPECT_FALSE(ui.shown(PROJECT));
    EXPECT_EQ(ui.take_message(),
              "Unsupported Config: This file isn't a site or project configuration.");
}

TEST_F(Opening, AFileAlreadyOpenComesForward) {
    const auto a = make_site("a");
    ui.start({a, make_site("b")});
    write_file(a, R"({"title": "changed"})");
    ui.platform.next_picks = {(ui.dir / "b/../a/.lumenfold-site").string()};
    ui.click(WINDOW + "/Titlebar/Right Tabs/App Tab");
    EXPECT_TRUE(ui.shown(HOME));
    ui.click(HOME + "/Open Button");
    EXPECT_EQ(ui.rows(LEFT_TABS), (Names{"config-1", "config-2"}));
    EXPECT_EQ(ui.text(TITLE_FIELD), "changed");
    EXPECT_EQ(tab_title(1), "a"); // as opened
    ASSERT_EQ(ui.platform.picks.size(), 1u);
    const Corvel::PickRequest& pick = ui.platform.picks[0];
    EXPECT_EQ(pick.mode + "|" + pick.title + "|" + pick.filter,
              "file|Open Configuration|Lumenfold Configs (*.lumenfold-site "
              "*.lumenfold-project);;All Files (*)");
    EXPECT_TRUE(pick.show_hidden);
}

TEST_F(Opening, ClosingTabsKeepsIdsAndEndsAtHome) {
    ui.start({make_site("a"), make_site("b")});
    ui.type(TITLE_FIELD, "kept");
    ui.row_action(left_tab(1), "close");
    EXPECT_EQ(ui.text(TITLE_FIELD), "kept"); // the active one is untouched
    EXPECT_TRUE(ui.shown(SITE));
    ui.row_action(left_tab(2), "close");
    EXPECT_TRUE(ui.shown(HOME));
    EXPECT_FALSE(ui.shown(WINDOW + "/Config Pane"));
    EXPECT_NE(read_file(ui.dir / "b/.lumenfold-site").find("kept"), std::string::npos);
    ui.platform.next_picks = {make_site("c").string()};
    ui.click(HOME + "/Open Button");
    EXPECT_EQ(ui.rows(LEFT_TABS), Names{"config-3"});
}

TEST_F(Opening, SectionTabsShowOnePanelEach) {
    ui.start({make_site("a")});
    const Names names = {"Website", "Projects", "Socials", "Policies", "Build"};
    for (const std::string& name : names) {
        ui.click(section_tab(name));
        for (const std::string& other : names) {
            EXPECT_EQ(ui.shown(PANELS + "/" + other + " Panel"), other == name) << name;
            EXPECT_EQ(ui.has_state(section_tab(other), "Active"), other == name) << name;
        }
    }
}

TEST_F(Opening, TabsCarryIconAndLogo) {
    write_file(ui.dir / "a/images/l.svg", "<svg/>");
    const auto site = make_site("a", R"(, "branding": {"logo_path": "/images/l.svg"})");
    write_file(ui.dir / "a/projects/p/.lumenfold-project",
               R"({"slug": "p", "name": "Pé", "logo": "/images/l.svg"})");
    ui.start({site, ui.dir / "a/projects/p/.lumenfold-project"});
    for (const int number : {1, 2})
        EXPECT_EQ(ui.source(left_tab(number) + "/Logo"), (ui.dir / "a/images/l.svg").string());
    EXPECT_EQ(tab_title(2), "Pé");
    EXPECT_FALSE(ui.shown(SITE));
}

TEST_F(Opening, MakesANewWebsite) {
    const std::string dialog = "App/New Website Dialog";
    const std::string location = dialog + "/Body/Location Row/Location Editor";
    ui.start();
    ui.click(HOME + "/New Website Button");
    EXPECT_EQ(ui.text(dialog + "/Body/Title Editor"), "My Site");
    ui.click(dialog + "/Body/Actions/Create Button");
    EXPECT_EQ(ui.take_message(), "Couldn't Create Site: Choose a location for the new site.");
    ui.platform.next_picks = {(ui.dir / "new").string()};
    ui.click(dialog + "/Body/Location Row/Browse Button");
    EXPECT_EQ(ui.text(location), (ui.dir / "new").string());
    ui.click(dialog + "/Body/Location Row/Browse Button"); // cancelled
    EXPECT_EQ(ui.text(location), (ui.dir / "new").string());
    EXPECT_EQ(ui.platform.picks[0].mode + "|" + ui.platform.picks[0].title, "dir|Choose Location");

    ui.type(dialog + "/Body/Title Editor", " \t ");
    ui.click(dialog + "/Body/Actions/Create Button");
    EXPECT_FALSE(ui.shown(dialog));
    EXPECT_EQ(ui.text(TITLE_FIELD), "My Site");

    ui.click(WINDOW + "/Titlebar/Right Tabs/App Tab");
    ui.click(HOME + "/New Website Button");
    EXPECT_EQ(ui.text(location), ""); // emptied, whatever was typed
    ui.type(location, (ui.dir / "new").string());
    ui.click(dialog + "/Body/Actions/Create Button");
    EXPECT_EQ(ui.take_message(), "Couldn't Create Site: .lumenfold-site already exists in " +
                                     (ui.dir / "new").string());
    EXPECT_TRUE(ui.shown(dialog));
    ui.click(dialog + "/Body/Actions/Cancel Button");
    EXPECT_FALSE(ui.shown(dialog));
}

/// Another configuration comes up, by each of the ways; a dirty text view or file editor asks.
TEST_F(Opening, EveryWayOutAsksForUnsavedText) {
    const auto b = make_site("b", R"(, "policies": [{"name": "P", "file": "/p.md"}])");
    write_file(ui.dir / "b/p.md", "old");
    ui.start({make_site("a"), b});
    const std::string leaving = " has unsaved changes. Leaving this configuration will discard "
                                "them. [Discard]";
    const auto activate = [&] { ui.row_action(left_tab(1), "activate"); };
    const auto open = [&] {
        ui.click(WINDOW + "/Titlebar/Right Tabs/App Tab");
        ui.platform.next_picks = {(ui.dir / "a/.lumenfold-site").string()};
        ui.click(HOME + "/Open Button");
    };
    const std::vector<std::function<void()>> ways = {activate, open};
    for (const auto& way : ways) {
        ui.row_action(left_tab(2), "activate");
        ui.type(TITLE_FIELD, "b2"); // a form edit asks nothing and is written
        ui.click(section_tab("Policies"));
        ui.type(POLICY_EDITOR, "new");
        way();
        EXPECT_EQ(ui.question(), "Discard changes?: The Policies editor" + leaving);
        ui.cancel();
        ui.row_action(left_tab(2), "activate");
        EXPECT_EQ(ui.text(POLICY_EDITOR), "new");
        EXPECT_EQ(ui.text(POLICY_STATUS), "Unsaved changes");
        way();
        ui.confirm();
        EXPECT_EQ(ui.text(TITLE_FIELD), "a");
        EXPECT_EQ(read_file(ui.dir / "b/p.md"), "old");
        EXPECT_NE(read_file(b).find("b2"), std::string::npos);

        ui.row_action(left_tab(2), "activate");
        ui.click(SITE_TEXT_TAB);
        const std::string saved = ui.text(SITE_TEXT);
        ui.type(SITE_TEXT, "{}");
        way();
        EXPECT_EQ(ui.question(), "Discard changes?: The Text view" + leaving);
        ui.confirm();
        EXPECT_EQ(read_file(b), saved);
        ui.click(SITE_TEXT_TAB);
        EXPECT_NE(ui.text(SITE_TEXT), "{}");
        ui.click(SITE_EDITOR_TAB);
        EXPECT_EQ(ui.question(), "");
    }
}

TEST_F(Opening, ClosingADirtyConfigurationAsksNothingNowOrLater) {
    const auto a = make_site("a", R"(, "policies": [{"name": "P", "file": "/p.md"}])");
    write_file(ui.dir / "a/p.md", "old");
    ui.start({a, make_site("b")});
    ui.row_action(left_tab(1), "activate");
    ui.click(section_tab("Policies"));
    ui.type(POLICY_EDITOR, "new");
    ui.row_action(left_tab(1), "close");
    EXPECT_EQ(ui.question(), "");
    ui.row_action(left_tab(2), "activate");
    EXPECT_EQ(ui.question(), "");
    EXPECT_EQ(ui.text(TITLE_FIELD), "b");
    EXPECT_EQ(read_file(ui.dir / "a/p.md"), "old");
}

TEST_F(Opening, TheNewQuestionReplacesTheOldAndAnActionMayAskAgain) {
    const auto a =
        make_site("a", R"(, "socials": [{"label": "one", "url": "u"}, {"label": "two"}])");
    ui.start({a});
    ui.click(section_tab("Socials"));
    ui.row_action(SOCIALS + "/Social Cards/social-0", "remove");
    ui.row_action(SOCIALS + "/Social Cards/social-1", "remove");
    EXPECT_EQ(ui.question(), "Remove Social Link: Remove 'two' from this site? [Remove]");
    ui.confirm();
    EXPECT_EQ(ui.question(), "");
    EXPECT_EQ(ui.rows(SOCIALS + "/Social Cards"), Names{"social-0"});
    EXPECT_EQ(ui.reading(SOCIALS + "/Social Cards/social-0"), "one");
}

} // namespace
} // namespace TestSupport
