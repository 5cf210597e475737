#include "project_fixture.h"

namespace TestSupport {
namespace {

using Words = std::vector<std::string>;

const std::string NAME_FIELD = PROJECT_PANEL + "/Project Form/Name Field";
const std::string TAGLINE_FIELD = PROJECT_PANEL + "/Project Form/Tagline Field";
const std::string ADD_DIALOG = "App/Add Project Dialog";
const std::string PROMOTE_DIALOG = "App/Promote Dialog";
const std::string PROMOTE_BUTTON = PROJECT_PANEL + "/Promote Button";
const std::string NO_SITE = "No .lumenfold-site found above this project.";

struct Families : ProjectTest {
    /// Opens a family of an overview and two members from its card.
    void open_family() {
        write_file(site, R"({"projects": [{"config": "./projects/api/.lumenfold-project"},
                             {"config": "./projects/api-a/.lumenfold-project"},
                             {"config": "./projects/api-b/.lumenfold-project"}]})");
        write_file(ui.dir / "projects/api/.lumenfold-project",
                   R"({"slug": "api", "name": "The API"})");
        write_file(member_file("a"),
                   R"({"slug": "a", "parent_slug": "api", "name": "A", "family_label": "Part A"})");
        write_file(member_file("b"),
                   R"({"slug": "b", "parent_slug": "api", "name": "B", "tagline": "bee"})");
        ui.start({site});
        ui.click(section_tab("Projects"));
        ui.row_action(PROJECTS + "/Project Cards/proj-0", "activate");
    }
    std::filesystem::path member_file(const std::string& slug) const {
        return ui.dir / ("projects/api-" + slug + "/.lumenfold-project");
    }
    void enter(const std::string& dialog, const std::string& field, const std::string& text) {
        ui.type(dialog + "/Body/" + field + " Editor", text);
    }
};

TEST_F(Families, TheOverviewShowsOnlyWhatItHas) {
    open_family();
    EXPECT_EQ(ui.rows(MEMBER_TABS), (Words{"member-0", "member-1", "member-2"}));
    EXPECT_EQ(ui.reading(MEMBER_TABS), "Overview|Part A|B|bee");
    EXPECT_EQ(ui.text(PROJECT_SIDEBAR + "/Project Tab/Label"), "Project Family");
    for (const std::string tab : {"Source", "Readme", "License", "Topics", "Dependencies",
                                  "Versions", "Downloads", "Build"})
        EXPECT_FALSE(ui.shown(PROJECT_SIDEBAR + "/" + tab + " Tab")) << tab;
    EXPECT_FALSE(ui.shown(PROJECT_PANEL + "/Add Fact Button"));
    EXPECT_FALSE(ui.shown(PROMOTE_BUTTON));

    ui.row_action(MEMBER_TABS + "/member-1", "activate");
    EXPECT_EQ(ui.text(PROJECT_SIDEBAR + "/Project Tab/Label"), "Project");
    EXPECT_TRUE(ui.shown(PROJECT_SIDEBAR + "/Build Tab"));
    EXPECT_EQ(ui.text(NAME_FIELD), "A");
    EXPECT_TRUE(ui.has_state(MEMBER_TABS + "/member-1", "Active"));
    EXPECT_FALSE(ui.has_state(MEMBER_TABS + "/member-0", "Active"));
}

TEST_F(Families, ASwitchOfMembersKeepsTheirTextsApart) {
    open_family();
    ui.row_action(MEMBER_TABS + "/member-1", "activate");
    ui.type(TAGLINE_FIELD, "for A");
    ui.row_action(MEMBER_TABS + "/member-2", "activate"); // writes what is pending
    EXPECT_EQ(ui.text(TAGLINE_FIELD), "bee");
    ui.type(TAGLINE_FIELD, "for B");
    ui.row_action(MEMBER_TABS + "/member-0", "activate");
    EXPECT_EQ(ui.text(TAGLINE_FIELD), "") << "the overview has none";
    EXPECT_NE(read_file(member_file("a")).find("\"for A\""), std::string::npos);
    EXPECT_NE(read_file(member_file("b")).find("\"for B\""), std::string::npos);
    ui.advance(1000);
    EXPECT_EQ(read_file(ui.dir / "projects/api/.lumenfold-project").find("tagline"),
              std::string::npos);
}

TEST_F(Families, ANewMemberComesUpAsATab) {
    open_family();
    ui.click(FAMILY_BAR + "/Add Member Button");
    EXPECT_EQ(ui.text(ADD_DIALOG + "/Titlebar/Title"), "New Project in The API");
    enter(ADD_DIALOG, "Name", "C");
    ui.click(ADD_DIALOG + "/Body/Actions/Create Button");
    EXPECT_TRUE(ui.shown(ADD_DIALOG)) << "a slug is required";
    enter(ADD_DIALOG, "Slug", "a");
    ui.click(ADD_DIALOG + "/Body/Actions/Create Button");
    EXPECT_EQ(ui.take_message(),
              "Couldn't Add Project: The family already has a project with slug 'a'.");
    enter(ADD_DIALOG, "Slug", "c");
    enter(ADD_DIALOG, "Family Label", "Part C");
    ui.click(ADD_DIALOG + "/Body/Actions/Create Button");
    EXPECT_FALSE(ui.shown(ADD_DIALOG));
    EXPECT_EQ(ui.rows(MEMBER_TABS), (Words{"member-0", "member-1", "member-2", "member-3"}));
    EXPECT_EQ(ui.text(NAME_FIELD), "C");
    EXPECT_TRUE(ui.has_state(MEMBER_TABS + "/member-3", "Active"));
    EXPECT_TRUE(std::filesystem::exists(member_file("c")));
}

TEST_F(Families, AFamilyWithoutASlugTakesNoMember) {
    open_family();
    write_file(ui.dir / "projects/api/.lumenfold-project", "{}");
    ui.click(FAMILY_BAR + "/Add Member Button");
    EXPECT_EQ(ui.take_message(), "Couldn't Add Project: The family's lead config has no slug.");
    EXPECT_FALSE(ui.shown(ADD_DIALOG));
}

TEST_F(Families, APlainNewProjectOpensInATab) {
    write_file(site, "{}");
    ui.start({site});
    ui.click(section_tab("Projects"));
    ui.click(PROJECTS + "/Add Project Button");
    EXPECT_EQ(ui.text(ADD_DIALOG + "/Titlebar/Title"), "New Project");
    EXPECT_FALSE(ui.shown(ADD_DIALOG + "/Body/Family Label Editor"));
    enter(ADD_DIALOG, "Name", "New One");
    enter(ADD_DIALOG, "Slug", "Bad Slug");
    ui.click(ADD_DIALOG + "/Body/Actions/Create Button");
    EXPECT_EQ(ui.take_message(),
              "Couldn't Add Project: Slug must be lowercase letters and digits in dash-separated "
              "runs (like \"profile-api\").");
    enter(ADD_DIALOG, "Slug", "new-one");
    ui.click(ADD_DIALOG + "/Body/Actions/Create Button");
    EXPECT_EQ(ui.rows(LEFT_TABS), (Words{"config-1", "config-2"}));
    EXPECT_EQ(ui.text(NAME_FIELD), "New One");
    EXPECT_FALSE(ui.shown(FAMILY_BAR));
}

TEST_F(Families, APromotedProjectBecomesAFamily) {
    open(R"("tagline": "t")");
    EXPECT_TRUE(ui.shown(PROMOTE_BUTTON));
    ui.click(PROMOTE_BUTTON);
    EXPECT_EQ(ui.text(PROMOTE_DIALOG + "/Body/Message"),
              "\"Solo\" becomes a project family: a family overview keeps its name and slug, and "
              "this project becomes the family's first member under a new slug (its pages move "
              "under the family's).");
    const std::string promote = PROMOTE_DIALOG + "/Body/Actions/Promote Button";
    enter(PROMOTE_DIALOG, "Slug", "solo");
    ui.click(promote);
    EXPECT_TRUE(ui.shown(PROMOTE_DIALOG)) << "a label is required";
    enter(PROMOTE_DIALOG, "Label", "Core");
    ui.click(promote);
    EXPECT_EQ(ui.take_message(),
              "Couldn't Promote: Choose a different slug — 'solo' stays with the family.");
    ui.click(PROMOTE_BUTTON);
    enter(PROMOTE_DIALOG, "Slug", "core");
    enter(PROMOTE_DIALOG, "Label", "Core");
    ui.click(promote);
    EXPECT_EQ(ui.take_message(), "");
    EXPECT_EQ(ui.reading(MEMBER_TABS), "Overview|t|Core|t");
    EXPECT_EQ(ui.text(PROJECT_SIDEBAR + "/Project Tab/Label"), "Project Family");
    EXPECT_FALSE(ui.shown(PROMOTE_BUTTON));
    ui.row_action(MEMBER_TABS + "/member-1", "activate");
    ui.type(TAGLINE_FIELD, "moved");
    ui.advance(500);
    EXPECT_NE(read_file(ui.dir / "projects/solo-core/.lumenfold-project").find("\"moved\""),
              std::string::npos);
}

TEST_F(Families, WithoutASiteThereIsNoPromotion) {
    const std::filesystem::path alone = ui.dir / "alone/.lumenfold-project";
    write_file(alone, R"({"slug": "alone"})");
    ui.start({alone});
    EXPECT_FALSE(ui.shown(PROMOTE_BUTTON));
}

TEST_F(Families, ASiteThatVanishesStopsTheDialogs) {
    open_family();
    ui.click(FAMILY_BAR + "/Add Member Button");
    enter(ADD_DIALOG, "Name", "C");
    enter(ADD_DIALOG, "Slug", "c");
    std::filesystem::remove(site);
    ui.click(ADD_DIALOG + "/Body/Actions/Create Button");
    EXPECT_EQ(ui.take_message(), "Couldn't Add Project: " + NO_SITE);
}

TEST_F(Families, APromotionNeedsTheSite) {
    open();
    ui.click(PROMOTE_BUTTON);
    enter(PROMOTE_DIALOG, "Slug", "core");
    enter(PROMOTE_DIALOG, "Label", "Core");
    std::filesystem::remove(site);
    ui.click(PROMOTE_DIALOG + "/Body/Actions/Promote Button");
    EXPECT_EQ(ui.take_message(), "Couldn't Promote: " + NO_SITE);
}

} // namespace
} // namespace TestSupport
