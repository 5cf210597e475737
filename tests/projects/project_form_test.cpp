#include "project_fixture.h"

namespace TestSupport {
namespace {

using Words = std::vector<std::string>;

const std::string FORM = PROJECT_PANEL + "/Project Form";
const std::string REPO_FORM = SOURCE_PANEL + "/Repo Form";
const std::string ADD_REPOSITORY = SOURCE_PANEL + "/Add Repository Button";
const std::string FACTS = PROJECT_PANEL + "/Facts Form";
const std::string FACT_DIALOG = "App/Add Fact Dialog";
const std::string DEP_CARDS = PROJECT_PANELS + "/Dependencies Panel/Dep Cards";
const std::string DEPENDENCY_DIALOG = "App/Add Dependency Dialog";
const std::string DOWNLOAD_CARDS = PROJECT_PANELS + "/Downloads Panel/Download Cards";
const std::string DOWNLOAD_DIALOG = "App/Add Download Dialog";

struct ProjectForm : ProjectTest {};

TEST_F(ProjectForm, FieldsEditTheirKeysAndNothingElse) {
    open(R"("unknown": [1, 2.50], "tagline": "old", "repo": {"platform": "git", "extra": true})");
    EXPECT_EQ(ui.text(FORM + "/Slug Field"), "solo");
    EXPECT_EQ(ui.text(FORM + "/Tagline Field"), "old");
    ui.type(FORM + "/Tagline Field", "new");
    show("Source");
    ui.type(REPO_FORM + "/URL Field", "https://x.example");
    ui.advance(500);
    EXPECT_EQ(read_file(file), "{\n"
                               "  \"slug\": \"solo\",\n"
                               "  \"name\": \"Solo\",\n"
                               "  \"unknown\": [\n    1,\n    2.5\n  ],\n"
                               "  \"tagline\": \"new\",\n"
                               "  \"repo\": {\n"
                               "    \"platform\": \"git\",\n"
                               "    \"extra\": true,\n"
                               "    \"url\": \"https://x.example\"\n"
                               "  }\n"
                               "}\n");
}

TEST_F(ProjectForm, ARepositoryIsAddedOnRequest) {
    open();
    show("Source");
    EXPECT_FALSE(ui.shown(REPO_FORM));
    EXPECT_TRUE(ui.shown(SOURCE_PANEL + "/Repository Label"));
    ui.click(ADD_REPOSITORY);
    EXPECT_TRUE(ui.shown(REPO_FORM));
    EXPECT_FALSE(ui.shown(ADD_REPOSITORY));
    EXPECT_TRUE(read_file(file).ends_with("  \"repo\": {}\n}\n")) << read_file(file);
}

TEST_F(ProjectForm, AnImportedLogoIsCopiedIntoTheSite) {
    open();
    write_file(ui.dir / "pictures/mark.svg", "<svg/>");
    ui.platform.next_picks = {(ui.dir / "pictures/mark.svg").string()};
    ui.click(PROJECT_PANEL + "/Logo Picker/Controls Row/Browse Button");
    EXPECT_EQ(ui.platform.picks.back().title, "Select a logo image (copied into your site)");
    EXPECT_EQ(read_file(ui.dir / "images/mark.svg"), "<svg/>");
    ui.advance(500);
    EXPECT_NE(read_file(file).find("\"logo\": \"/images/mark.svg\""), std::string::npos);
    EXPECT_EQ(ui.source(PROJECT_PANEL + "/Logo Picker/Avatar/Logo Image"),
              (ui.dir / "images/mark.svg").string());
}

TEST_F(ProjectForm, FactsShowEditAndLock) {
    write_file(ui.dir / "projects/solo/versions/1.9/.lumenfold-built", R"({"tag": "1.9.0"})");
    write_file(ui.dir / "projects/solo/versions/1.10/.lumenfold-built", R"({"tag": "1.10.0"})");
    open(R"("versions": [{"label": "1.10", "release_date": "2026-05-01"}, {"label": "1.9"}],
            "facts": [{"label": "Stable", "preset": "stable_release"},
                      {"label": "Language", "value": "C++"}, {"value": "bare"}, 7])");
    EXPECT_EQ(ui.rows(FACTS), (Words{"fact-0", "fact-1", "fact-2", "fact-3"}));
    EXPECT_EQ(ui.text(FACTS + "/fact-0/Value Field"), "1.10 (2026-05-01)");
    EXPECT_TRUE(ui.has_state(FACTS + "/fact-0/Value Field", "Locked"));
    EXPECT_FALSE(ui.has_state(FACTS + "/fact-1/Value Field", "Locked"));
    ui.app->dispatch_event(FACTS + "/fact-0/Value Field", "input:mine");
    ui.type(FACTS + "/fact-1/Value Field", "Rust");
    ui.advance(500);
    EXPECT_EQ(read_file(file).find("mine"), std::string::npos);
    EXPECT_NE(read_file(file).find("\"value\": \"Rust\""), std::string::npos);

    ui.row_action(FACTS + "/fact-1", "remove");
    EXPECT_EQ(ui.question(), "Remove Fact: Remove fact 'Language'? [Remove]");
    ui.cancel();
    ui.row_action(FACTS + "/fact-2", "remove");
    EXPECT_EQ(ui.question(), "Remove Fact: Remove fact 'this fact'? [Remove]");
    ui.confirm();
    EXPECT_EQ(ui.rows(FACTS), (Words{"fact-0", "fact-1", "fact-2"}));
    EXPECT_EQ(read_file(file).find("bare"), std::string::npos);
}

TEST_F(ProjectForm, ADerivedFactWithoutVersionsSaysSo) {
    open(R"("facts": [{"label": "Stable", "preset": "stable_release"}])");
    EXPECT_EQ(ui.text(FACTS + "/fact-0/Value Field"), "Derived from the latest build");
}

TEST_F(ProjectForm, ALockDoesNotStayOnThePositionOfARow) {
    open(
        R"("facts": [{"label": "Stable", "preset": "stable_release"}, {"label": "B", "value": "b"}])");
    ui.row_action(FACTS + "/fact-0", "remove");
    ui.confirm();
    EXPECT_FALSE(ui.has_state(FACTS + "/fact-0/Value Field", "Locked"));
    EXPECT_EQ(ui.text(FACTS + "/fact-0/Value Field"), "b");
    ui.type(FACTS + "/fact-0/Value Field", "c");
    ui.advance(500);
    EXPECT_NE(read_file(file).find("\"value\": \"c\""), std::string::npos);
}

TEST_F(ProjectForm, AddDialogsNeedTheirFieldsAndSayWhatFailed) {
    struct Case {
        std::string tab, open_button, dialog;
        std::vector<std::pair<std::string, std::string>> fields; ///< the first two are required
        std::string written, failure;
    };
    const Case cases[] = {
        {"Project",
         PROJECT_PANEL + "/Add Fact Button",
         FACT_DIALOG,
         {{"Label", " L "}, {"Value", "V"}, {"Note", "N"}},
         "\"label\": \"L\",\n      \"value\": \"V\",\n      \"note\": \"N\"",
         "Couldn't Add Fact"},
        {"Dependencies",
         PROJECT_PANELS + "/Dependencies Panel/Add Dependency Button",
         DEPENDENCY_DIALOG,
         {{"Name", "Zlib"}, {"URL", "https://z.example"}},
         "\"name\": \"Zlib\",\n      \"url\": \"https://z.example\",\n      \"external\": true",
         "Couldn't Add Dependency"},
        {"Downloads",
         PROJECT_PANELS + "/Downloads Panel/Add Download Button",
         DOWNLOAD_DIALOG,
         {{"URL", "https://d.example"}, {"Platform", "Linux"}, {"Size", "3 MB"}},
         "\"url\": \"https://d.example\",\n      \"platform_label\": \"Linux\",\n      "
         "\"size\": \"3 MB\"",
         "Couldn't Add Download"},
    };
    open();
    for (const Case& row : cases) {
        SCOPED_TRACE(row.dialog);
        const std::string create = row.dialog + "/Body/Actions/Create Button";
        show(row.tab);
        ui.click(row.open_button);
        const std::string before = read_file(file);
        const auto editor = [&](std::size_t i) {
            return row.dialog + "/Body/" + row.fields[i].first + " Editor";
        };
        for (std::size_t i = 0; i < row.fields.size(); ++i) {
            EXPECT_EQ(ui.text(editor(i)), "");
            ui.click(create);
            EXPECT_EQ(ui.shown(row.dialog), true) << "a required field is empty";
            ui.type(editor(i), row.fields[i].second);
            if (i == 1)
                break;
        }
        EXPECT_EQ(read_file(file), before);
        for (std::size_t i = 2; i < row.fields.size(); ++i)
            ui.type(editor(i), row.fields[i].second);
        ui.click(create);
        EXPECT_FALSE(ui.shown(row.dialog));
        EXPECT_NE(read_file(file).find(row.written), std::string::npos) << read_file(file);

        ui.click(row.open_button);
        ui.type(editor(0), "x");
        ui.type(editor(1), "y");
        const std::string saved = read_file(file);
        write_file(file, "[");
        ui.click(create);
        EXPECT_TRUE(ui.take_message().starts_with(row.failure + ": Parse error: "));
        EXPECT_TRUE(ui.shown(row.dialog));
        write_file(file, saved);
        ui.click(row.dialog + "/Body/Actions/Cancel Button");
        EXPECT_FALSE(ui.shown(row.dialog));
    }
}

TEST_F(ProjectForm, AnEmptyCollectionSaysSoUntilItHasSomething) {
    open(R"("requires": [{"name": "A", "url": "u"}])");
    for (const auto& [tab, empty] : {std::pair("Dependencies", false), std::pair("Downloads", true),
                                     std::pair("Topics", true)}) {
        show(tab);
        EXPECT_EQ(ui.shown(PROJECT_PANELS + "/" + tab + " Panel/Empty Note"), empty) << tab;
    }
    show("Dependencies");
    ui.row_action(DEP_CARDS + "/dep-0", "remove");
    ui.confirm();
    EXPECT_TRUE(ui.shown(PROJECT_PANELS + "/Dependencies Panel/Empty Note"));
}

TEST_F(ProjectForm, LinkCardsOpenAndGo) {
    open(R"("requires": [{"name": "A", "url": "https://a.example", "external": true},
                         {"url": "/local/"}],
            "downloads": [{"platform_label": "Linux", "url": "https://d.example", "size": "1"}, {}])");
    show("Dependencies");
    EXPECT_TRUE(ui.shown(DEP_CARDS + "/dep-0/External"));
    EXPECT_FALSE(ui.shown(DEP_CARDS + "/dep-1/External"));
    ui.row_action(DEP_CARDS + "/dep-0", "activate");
    ui.row_action(DEP_CARDS + "/dep-1", "activate");
    EXPECT_EQ(ui.platform.opened_urls, Words{"https://a.example"});
    ui.row_action(DEP_CARDS + "/dep-1", "remove");
    EXPECT_EQ(ui.question(), "Remove Dependency: Remove dependency 'this dependency'? [Remove]");
    ui.cancel();
    ui.row_action(DEP_CARDS + "/dep-0", "remove");
    EXPECT_EQ(ui.question(), "Remove Dependency: Remove dependency 'A'? [Remove]");
    ui.confirm();
    EXPECT_EQ(ui.rows(DEP_CARDS), Words{"dep-0"});
    EXPECT_FALSE(ui.shown(DEP_CARDS + "/dep-0/External")) << "the mark belongs to the position";

    show("Downloads");
    ui.row_action(DOWNLOAD_CARDS + "/download-0", "remove");
    EXPECT_EQ(ui.question(), "Remove Download: Remove the Linux download? The file itself (if any) "
                             "stays where it is. [Remove]");
    ui.cancel();
    ui.row_action(DOWNLOAD_CARDS + "/download-1", "remove");
    EXPECT_EQ(ui.question(), "Remove Download: Remove the this download download? The file itself "
                             "(if any) stays where it is. [Remove]");
    ui.confirm();
    EXPECT_EQ(ui.rows(DOWNLOAD_CARDS), Words{"download-0"});
}

} // namespace
} // namespace TestSupport
