#include "app_driver.h"
#include "site_paths.h"

#include <gtest/gtest.h>

namespace TestSupport {
namespace {

using Names = std::vector<std::string>;

const std::string CARDS = PROJECTS + "/Project Cards";
const std::string ORPHANS = PROJECTS + "/Orphan Rows";
const std::string SOCIAL_CARDS = SOCIALS + "/Social Cards";
const std::string SECTIONS = WEBSITE + "/Home Layout/Section Cards";
const std::string SOCIAL_DIALOG = "App/Add Social Dialog";
const std::string POLICY_DIALOG = "App/Add Policy Dialog";
const std::string ADD_SECTION = "App/Add Section Dialog";

struct Collections : testing::Test {
    AppDriver ui;
    std::filesystem::path file = ui.dir / ".lumenfold-site";

    void open(const std::string& text, const std::string& tab) {
        write_file(file, text);
        ui.start({file});
        ui.click(section_tab(tab));
    }
    void project(const std::string& folder, const std::string& members) {
        write_file(ui.dir / ("projects/" + folder + "/.lumenfold-project"), "{" + members + "}");
    }
    static std::string entry(const std::string& folder) {
        return R"({"config": "./projects/)" + folder + R"(/.lumenfold-project"})";
    }
    void remove_and_expect(const std::string& row, const std::string& question) {
        ui.row_action(row, "remove");
        EXPECT_EQ(ui.question(), question);
    }
};

TEST_F(Collections, ProjectCardsGroupFamilies) {
    project("api-web",
            R"("slug": "web", "parent_slug": "api", "name": "Web", "family_label": "W")");
    project("solo", R"("slug": "solo", "name": "Solo", "tagline": "alone")");
    project("api", R"("slug": "api", "name": "The API", "tagline": "all of it", "logo": "l.svg")");
    project("lost-x", R"("slug": "x", "parent_slug": "lost", "name": "X")");
    project("broken", R"("slug": )");
    write_file(ui.dir / "projects/api/l.svg", "<svg/>");
    open(R"({"projects": [)" + entry("api-web") + "," + entry("solo") + "," + entry("api") + "," +
             entry("broken") + "," + entry("nowhere") + "," + entry("lost-x") + "]}",
         "Projects");
    EXPECT_EQ(ui.rows(CARDS), (Names{"proj-0", "proj-1", "proj-2"}));
    EXPECT_EQ(ui.reading(CARDS + "/proj-0"), "The API|all of it");
    EXPECT_EQ(ui.reading(CARDS + "/proj-1"), "Solo|alone");
    EXPECT_EQ(ui.reading(CARDS + "/proj-2"), "");
    EXPECT_FALSE(ui.shown(ORPHANS));
    EXPECT_FALSE(ui.shown(PROJECTS + "/Orphans Label"));

    remove_and_expect(CARDS + "/proj-1",
                      "Remove Project: Remove 'Solo' from this site? Its project entry leaves the "
                      "site's registry; the files stay on disk. [Remove]");
    remove_and_expect(CARDS + "/proj-0",
                      "Remove Project: Remove 'The API' from this site? Its 2 project entries "
                      "leave the site's registry; the files stay on disk. [Remove]");
    ui.confirm();
    EXPECT_EQ(ui.rows(CARDS), (Names{"proj-0", "proj-1"}));
    EXPECT_EQ(ui.rows(ORPHANS), (Names{"orphan-0", "orphan-1"})); // both come back as orphans
    EXPECT_TRUE(std::filesystem::exists(ui.dir / "projects/api/.lumenfold-project"));
}

TEST_F(Collections, CardsOpenProjectsAndFamilies) {
    project("solo", R"("slug": "solo", "name": "Solo", "family_label": "Own")");
    project("api", R"("slug": "api", "name": "The API")");
    project("api-web", R"("slug": "web", "parent_slug": "api", "name": "Web")");
    project("lost-x", R"("slug": "x", "parent_slug": "lost", "name": "X")");
    open(R"({"projects": [)" + entry("solo") + "," + entry("api") + "," + entry("api-web") + "," +
             entry("lost-x") + "]}",
         "Projects");
    struct Case {
        std::string row, title, members;
    };
    int tab = 2;
    for (const Case& row : {Case{"proj-0", "Solo", ""},
                            {"proj-1", "The API", "Overview|Web"},
                            {"proj-2", "Project", ""}}) {
        SCOPED_TRACE(row.row);
        ui.row_action(left_tab(1), "activate");
        ui.click(section_tab("Projects"));
        ui.row_action(CARDS + "/" + row.row, "activate");
        EXPECT_EQ(ui.text(left_tab(tab++) + "/Title"), row.title);
        std::string members;
        for (const std::string& member : ui.rows(PROJECT + "/Family Bar/Member Tabs"))
            members += (members.empty() ? "" : "|") +
                       ui.reading(PROJECT + "/Family Bar/Member Tabs/" + member);
        EXPECT_EQ(members, row.members);
    }
}

TEST_F(Collections, OrphansRegister) {
    project("b", R"("slug": "b", "name": "B")");
    project("a", R"("slug": "a", "name": "A")");
    std::filesystem::create_directories(ui.dir / "projects/empty");
    open(R"({"title": "T", "projects": [{"config": "projects/../projects/b/.lumenfold-project"}]})",
         "Projects");
    EXPECT_EQ(ui.rows(ORPHANS), Names{"orphan-0"});
    EXPECT_EQ(ui.reading(ORPHANS + "/orphan-0").substr(0, 37),
              "a|./projects/a/.lumenfold-project|Add");
    ui.row_action(ORPHANS + "/orphan-0", "activate");
    EXPECT_EQ(ui.rows(CARDS), (Names{"proj-0", "proj-1"}));
    EXPECT_FALSE(ui.shown(ORPHANS));
    EXPECT_NE(read_file(file).find(R"("config": "./projects/a/.lumenfold-project")"),
              std::string::npos);
}

TEST_F(Collections, SocialCards) {
    write_file(ui.dir / "images/i.svg", "<svg/>");
    open(R"({"socials": [{"label": "Mail", "username": "me", "url": "mailto:x", "external": true,
             "icon": "/images/i.svg"}, {"username": "solo", "url": ""},
             {"label": "Same", "username": "Same", "external": "true"},
             {"label": "Last", "external": true}]})",
         "Socials");
    EXPECT_EQ(ui.rows(SOCIAL_CARDS), (Names{"social-0", "social-1", "social-2", "social-3"}));
    EXPECT_EQ(ui.reading(SOCIAL_CARDS + "/social-0").substr(0, 7), "Mail|me");
    EXPECT_EQ(ui.reading(SOCIAL_CARDS + "/social-1"), "solo|solo");
    EXPECT_EQ(ui.reading(SOCIAL_CARDS + "/social-2"), "Same");
    const auto external = [&](const std::string& row) {
        return ui.shown(SOCIAL_CARDS + "/" + row + "/External");
    };
    EXPECT_TRUE(external("social-0"));
    EXPECT_FALSE(external("social-2"));
    ui.row_action(SOCIAL_CARDS + "/social-0", "activate");
    ui.row_action(SOCIAL_CARDS + "/social-1", "activate");
    EXPECT_EQ(ui.platform.opened_urls, Names{"mailto:x"});
    remove_and_expect(SOCIAL_CARDS + "/social-1",
                      "Remove Social Link: Remove 'this link' from this site? [Remove]");
    remove_and_expect(SOCIAL_CARDS + "/social-0",
                      "Remove Social Link: Remove 'Mail' from this site? [Remove]");
    ui.confirm();
    EXPECT_FALSE(external("social-0")); // the mark goes with its link, not with the position
    EXPECT_TRUE(external("social-2"));
}

TEST_F(Collections, AddSocial) {
    open(R"({"title": "T", "socials": "none"})", "Socials");
    write_file(ui.dir / "pics/icon.svg", "<svg/>");
    const std::string hint = SOCIAL_DIALOG + "/Body/Icon Row/Icon Hint";
    const std::string create = SOCIAL_DIALOG + "/Body/Actions/Create Button";
    ui.click(SOCIALS + "/Add Social Button");
    EXPECT_EQ(ui.text(hint), "No icon selected.");
    EXPECT_TRUE(ui.app->is_checked(SOCIAL_DIALOG + "/Body/External Row/External Checkbox"));
    ui.type(SOCIAL_DIALOG + "/Body/Label Editor", " Forge ");
    ui.click(create); // no address yet: silent
    EXPECT_TRUE(ui.shown(SOCIAL_DIALOG));
    ui.type(SOCIAL_DIALOG + "/Body/URL Editor", "https://f");
    ui.platform.next_picks = {(ui.dir / "pics/icon.svg").string()};
    ui.click(SOCIAL_DIALOG + "/Body/Icon Row/Browse Button");
    EXPECT_EQ(ui.platform.picks.back().title, "Select a social icon (copied into your site)");
    EXPECT_EQ(ui.text(hint), "icon.svg");
    ui.click(create);
    EXPECT_FALSE(ui.shown(SOCIAL_DIALOG));
    EXPECT_EQ(read_file(file), "{\n  \"title\": \"T\",\n  \"socials\": [\n    {\n"
                               "      \"label\": \"Forge\",\n      \"url\": \"https://f\",\n"
                               "      \"icon\": \"/images/icon.svg\",\n      \"external\": true\n"
                               "    }\n  ]\n}\n");
    ui.click(SOCIALS + "/Add Social Button");
    EXPECT_EQ(ui.text(SOCIAL_DIALOG + "/Body/Label Editor"), "");
    EXPECT_EQ(ui.text(hint), "No icon selected.");
    ui.type(SOCIAL_DIALOG + "/Body/Label Editor", "x");
    ui.type(SOCIAL_DIALOG + "/Body/URL Editor", "y");
    write_file(file, "{");
    ui.click(create);
    EXPECT_EQ(ui.take_message().substr(0, 39), "Couldn't Add Social Link: Parse error: ");
    EXPECT_TRUE(ui.shown(SOCIAL_DIALOG));
}

TEST_F(Collections, PoliciesPanel) {
    open(R"({"policies": [{"slug": "a", "name": "A", "title": "TA", "file": "//a.md"},
             {"slug": "b"}, {}], "footer_links": [{"label": "A", "href": "a.html"}]})",
         "Policies");
    const std::string name = POLICIES + "/Meta Form/Name Field";
    const std::string remove = POLICIES + "/Selector Row/Remove Button";
    EXPECT_EQ(ui.options(POLICY_COMBO), (Names{"A", "b", "Policy 3"}));
    EXPECT_EQ(ui.text(POLICIES + "/Meta Form/File Field"), "//a.md");
    ui.click(remove);
    EXPECT_EQ(ui.question(), "Remove Policy: Remove policy 'A' from this site? Its footer link "
                             "goes too; the Markdown file stays on disk. [Remove]");
    ui.cancel();
    ui.choose(POLICY_COMBO, "2");
    EXPECT_EQ(ui.text(name), "");
    ui.type(name, "C");
    ui.advance(500);
    EXPECT_NE(read_file(file).find("{\n      \"name\": \"C\"\n    }"), std::string::npos);
    ui.click(remove);
    EXPECT_EQ(ui.question(), "Remove Policy: Remove policy 'C' from this site? The Markdown file "
                             "stays on disk. [Remove]");
    ui.confirm();
    EXPECT_EQ(ui.selected(POLICY_COMBO), "1"); // the last one left
    ui.click(remove);
    EXPECT_EQ(ui.question(), "Remove Policy: Remove policy 'this policy' from this site? The "
                             "Markdown file stays on disk. [Remove]");
    ui.confirm();
    ui.click(remove);
    ui.confirm();
    EXPECT_EQ(ui.options(POLICY_COMBO), Names{});
    for (const char* node :
         {"/Meta Form", "/File Status Bar", "/File Editor", "/Selector Row/Remove Button"})
        EXPECT_FALSE(ui.shown(POLICIES + node)) << node;
    EXPECT_EQ(read_file(file), "{\n  \"policies\": [],\n  \"footer_links\": []\n}\n");
}

TEST_F(Collections, AddPolicyDerivesSlugAndFile) {
    open(R"({"title": "S"})", "Policies");
    const std::string name = POLICY_DIALOG + "/Body/Name Editor";
    const std::string slug = POLICY_DIALOG + "/Body/Slug Editor";
    const std::string path = POLICY_DIALOG + "/Body/File Row/File Editor";
    ui.click(POLICIES + "/Selector Row/Add Button");
    struct Case {
        std::string editor, typed, slug, file;
    };
    for (const Case& row :
         {Case{name, "Privacy, Please!", "privacy-please", "policies/privacy-please.md"},
          {name, "!", "", ""},
          {name, "A B", "a-b", "policies/a-b.md"},
          {slug, " own ", " own ", "policies/own.md"},
          {name, "Other", " own ", "policies/own.md"},
          {path, "mine.md", " own ", "mine.md"},
          {slug, "s2", "s2", "mine.md"},
          {path, "", "s2", ""}, // emptied, it follows again
          {slug, "s3", "s3", "policies/s3.md"},
          {slug, "", "", ""},
          {name, "Last One", "last-one", "policies/last-one.md"}}) {
        SCOPED_TRACE(row.typed);
        ui.type(row.editor, row.typed);
        EXPECT_EQ(ui.text(slug), row.slug);
        EXPECT_EQ(ui.text(path), row.file);
    }
    write_file(ui.dir / "docs/in.md", "x");
    ui.platform.next_picks = {(ui.dir / "docs/in.md").string()};
    ui.click(POLICY_DIALOG + "/Body/File Row/Browse Button");
    const Corvel::PickRequest pick = ui.platform.picks.back();
    EXPECT_EQ(pick.title + "|" + pick.filter + "|" + pick.directory,
              "Select a policy Markdown file|Markdown (*.md *.markdown);;All Files (*)|" +
                  (ui.dir / "policies").string());
    EXPECT_EQ(ui.text(path), "docs/in.md");
    ui.type(name, "Changed");
    EXPECT_EQ(ui.text(path), "docs/in.md");
}

TEST_F(Collections, AddPolicyWritesItsParts) {
    open(R"({"title": "S"})", "Policies");
    const std::string create = POLICY_DIALOG + "/Body/Actions/Create Button";
    ui.click(POLICIES + "/Selector Row/Add Button");
    ui.click(create); // no name: silent
    EXPECT_TRUE(ui.shown(POLICY_DIALOG));
    ui.type(POLICY_DIALOG + "/Body/Name Editor", "Privacy");
    ui.click(create);
    EXPECT_FALSE(ui.shown(POLICY_DIALOG));
    EXPECT_EQ(read_file(ui.dir / "policies/privacy.md"), "# S - Privacy\n");
    EXPECT_EQ(ui.text(POLICY_EDITOR), "# S - Privacy\n");
    EXPECT_EQ(ui.options(POLICY_COMBO), Names{"Privacy"});
    const std::string text = read_file(file);
    EXPECT_NE(text.find(R"("title": "S - Privacy")"), std::string::npos);
    EXPECT_NE(text.find(R"("href": "privacy.html")"), std::string::npos);

    ui.click(POLICIES + "/Selector Row/Add Button");
    ui.type(POLICY_DIALOG + "/Body/Name Editor", "Privacy");
    ui.click(create);
    EXPECT_EQ(ui.take_message(), "Couldn't Add Policy: Policy 'privacy' already exists.");
    ui.type(POLICY_DIALOG + "/Body/Slug Editor", "two");
    ui.type(POLICY_DIALOG + "/Body/Title Editor", "Mine");
    ui.click(POLICY_DIALOG + "/Body/Footer Row/Footer Checkbox");
    write_file(ui.dir / "policies/two.md", "there");
    ui.click(create);
    EXPECT_EQ(read_file(ui.dir / "policies/two.md"), "there");
    EXPECT_EQ(read_file(file).find("two.html"), std::string::npos);
}

TEST_F(Collections, HomeSections) {
    write_file(ui.dir / "images/i.svg", "<svg/>");
    open(R"({"home": {"sections": [{"type": "description"}, {"type": "odd"}, 7,
             {"type": "projects"}, {"type": "socials"},
             {"type": "custom", "label": "C", "subtext": "sub", "icon": "/images/i.svg"},
             {"type": "custom"}]}})",
         "Website");
    EXPECT_EQ(ui.rows(SECTIONS), (Names{"home-0", "home-3", "home-4", "home-5", "home-6"}));
    for (const auto& [row, reading] :
         {std::pair{"home-0", "Website Description|Display the configured description text"},
          {"home-3", "Projects|Display the project cards"},
          {"home-4", "Socials|Display the social cards"},
          {"home-5", "C|sub"},
          {"home-6", "Custom section"}})
        EXPECT_EQ(ui.reading(SECTIONS + "/" + row), reading);
    ui.row_action(SECTIONS + "/home-6", "edit"); // no content: nothing opens
    EXPECT_FALSE(ui.shown(SECTION_DIALOG));
    remove_and_expect(SECTIONS + "/home-3",
                      "Remove Home Section: Remove 'Projects' from the home page? You can add it "
                      "back later. [Remove]");
    remove_and_expect(SECTIONS + "/home-6",
                      "Remove Home Section: Remove 'this section' from the home page? Its content "
                      "fragment stays on disk. [Remove]");
    remove_and_expect(SECTIONS + "/home-5",
                      "Remove Home Section: Remove 'C' from the home page? Its content fragment "
                      "stays on disk. [Remove]");
    ui.confirm();
    ui.row_action(SECTIONS + "/home-4", "up");
    EXPECT_EQ(ui.reading(SECTIONS + "/home-3").substr(0, 7), "Socials");
    EXPECT_EQ(ui.reading(SECTIONS + "/home-4").substr(0, 8), "Projects");
    ui.row_action(SECTIONS + "/home-0", "up"); // the first stays
    EXPECT_EQ(ui.reading(SECTIONS + "/home-0").substr(0, 7), "Website");
}

TEST_F(Collections, AddSections) {
    open(R"({"home": {"sections": [{"type": "projects"}]}})", "Website");
    const std::string add = WEBSITE + "/Home Layout/Layout Header/Add Button";
    const std::string create = ADD_SECTION + "/Body/Actions/Create Button";
    ui.click(add);
    EXPECT_TRUE(ui.shown(ADD_SECTION + "/Body/Presets Label"));
    EXPECT_FALSE(ui.shown(ADD_SECTION + "/Body/Projects Preset"));
    ui.click(ADD_SECTION + "/Body/Socials Preset");
    ui.click(add);
    ui.click(ADD_SECTION + "/Body/Description Preset");
    EXPECT_EQ(ui.rows(SECTIONS), (Names{"home-0", "home-1", "home-2"}));
    ui.click(add);
    for (const char* node :
         {"Presets Label", "Description Preset", "Projects Preset", "Socials Preset"})
        EXPECT_FALSE(ui.shown(ADD_SECTION + "/Body/" + node)) << node;
    ui.click(create); // no label: silent
    ui.type(ADD_SECTION + "/Body/Label Editor", "Get Going");
    ui.type(ADD_SECTION + "/Body/Subtext Editor", " soon ");
    ui.platform.next_picks = {""};
    ui.click(ADD_SECTION + "/Body/Icon Row/Browse Button");
    EXPECT_EQ(ui.platform.picks.back().title, "Select a section icon (copied into your site)");
    EXPECT_EQ(ui.text(ADD_SECTION + "/Body/Icon Row/Icon Hint"), "No icon selected.");
    ui.click(create);
    EXPECT_FALSE(ui.shown(ADD_SECTION));
    EXPECT_EQ(ui.text(SECTION_DIALOG + "/Titlebar/Title"), "Edit: Get Going");
    EXPECT_EQ(ui.text(SECTION_EDITOR), read_file(ui.dir / "content-fragments/get-going_home.html"));
    EXPECT_NE(ui.text(SECTION_EDITOR), "");
    EXPECT_NE(read_file(file).find("\"type\": \"custom\",\n        \"id\": \"get-going\",\n"
                                   "        \"label\": \"Get Going\",\n"
                                   "        \"subtext\": \"soon\",\n        \"body\": "
                                   "\"/content-fragments/get-going_home.html\""),
              std::string::npos);
    ui.click(SECTION_DIALOG + "/Body/Done Row/Done Button");

    ui.click(add);
    ui.type(ADD_SECTION + "/Body/Label Editor", "Late");
    write_file(file, "[]");
    ui.click(create);
    EXPECT_EQ(ui.take_message(), "Couldn't Add Section: Could not update the site configuration.");
    std::filesystem::remove_all(ui.dir / "content-fragments");
    write_file(ui.dir / "content-fragments", "a file");
    ui.click(create);
    EXPECT_EQ(ui.take_message(),
              "Couldn't Add Section: Could not create the section's content file.");
}

TEST_F(Collections, AnotherProgramsChangeSurvives) {
    open(R"({"title": "A", "socials": [{"label": "one", "url": "u"}]})", "Socials");
    ui.click(section_tab("Website"));
    ui.type(TITLE_FIELD, "B");
    write_file(file, R"({"title": "A", "url": "theirs", "socials": [{"label": "one"}]})");
    ui.click(section_tab("Socials"));
    ui.row_action(SOCIAL_CARDS + "/social-0", "remove");
    ui.confirm();
    EXPECT_EQ(read_file(file),
              "{\n  \"title\": \"B\",\n  \"url\": \"theirs\",\n  \"socials\": []\n}\n");
}

} // namespace
} // namespace TestSupport
