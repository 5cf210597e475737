#include "project_fixture.h"

namespace TestSupport {
namespace {

using Words = std::vector<std::string>;

const std::string README = PROJECT_PANELS + "/Readme Panel";
const std::string README_FIELD = README + "/Path Form/Readme Path Field";
const std::string README_EDITOR = README + "/Readme Editor";
const std::string README_STATUS = README + "/Readme Status Bar/Status Message";
const std::string LICENSE = PROJECT_PANELS + "/License Panel";
const std::string SOURCE_FIELD = SOURCE_PANEL + "/Local Form/Source Path Field";
const std::string TOPICS = PROJECT_PANELS + "/Topics Panel";
const std::string TOPIC_COMBO = TOPICS + "/Selector Row/Item Combo";
const std::string TOPIC_DIALOG = "App/Add Topic Dialog";

struct Documents : ProjectTest {
    static constexpr const char* SOURCE = R"("build": {"source_path": "../../src"})";
};

TEST_F(Documents, AReadmeIsFoundBelowTheSourceRoot) {
    write_file(ui.dir / "src/docs/READ.md", "# Hello\n");
    open(SOURCE, R"({"build": {"readme": "docs/READ.md"}, "kept": 1})");
    show("Readme");
    EXPECT_EQ(ui.text(README_FIELD), "docs/READ.md");
    EXPECT_EQ(ui.text(README_EDITOR), "# Hello\n");
    EXPECT_FALSE(ui.shown(README + "/Create Row"));
    ui.type(README_EDITOR, "# Changed\n");
    EXPECT_EQ(ui.text(README_STATUS), "Unsaved changes");
    ui.click(README + "/Readme Status Bar/Save Button");
    EXPECT_EQ(read_file(ui.dir / "src/docs/READ.md"), "# Changed\n");
    EXPECT_EQ(ui.text(README_STATUS), "");

    ui.type(README_FIELD, "gone.md");
    EXPECT_EQ(ui.text(README_STATUS), "README not found");
    EXPECT_TRUE(ui.has_state(README_EDITOR, "Locked"));
    EXPECT_EQ(ui.text(README + "/Create Row/Create Button/Label"), "Create gone.md");
    ui.advance(500);
    EXPECT_EQ(read_file(manifest),
              "{\n  \"build\": {\n    \"readme\": \"gone.md\"\n  },\n  \"kept\": 1\n}\n");
    ui.click(README + "/Create Row/Create Button");
    EXPECT_TRUE(std::filesystem::exists(ui.dir / "src/gone.md"));
    EXPECT_FALSE(ui.shown(README + "/Create Row"));
    EXPECT_FALSE(ui.has_state(README_EDITOR, "Locked"));
}

TEST_F(Documents, AMissingLicenseIsMadeUnderItsDefaultName) {
    open(SOURCE);
    show("License");
    EXPECT_EQ(ui.text(LICENSE + "/Create Row/Create Button/Label"), "Create LICENSE");
    EXPECT_EQ(ui.text(LICENSE + "/License Status Bar/Status Message"), "");
    ui.click(LICENSE + "/Create Row/Create Button");
    ui.advance(500);
    EXPECT_TRUE(std::filesystem::exists(ui.dir / "src/LICENSE"));
    EXPECT_EQ(ui.text(LICENSE + "/Path Form/License Path Field"), "LICENSE");
    EXPECT_EQ(read_file(manifest), "{\n  \"build\": {\n    \"license\": \"LICENSE\"\n  }\n}\n");
}

TEST_F(Documents, WithoutASourceRootNothingIsOffered) {
    open();
    show("Readme");
    EXPECT_FALSE(ui.shown(README + "/Create Row"));
}

TEST_F(Documents, ANewSourceRootFindsAllDocumentsAnew) {
    const std::string topics =
        R"("topics": [{"slug": "t", "label": "T", "source": "guides/t.md"}])";
    write_file(ui.dir / "other/README.md", "other");
    write_file(ui.dir / "other/guides/t.md", "other topic");
    open(SOURCE, R"({"build": {"readme": "README.md", )" + topics + "}}");
    show("Readme");
    EXPECT_EQ(ui.text(README_STATUS), "README not found");
    ui.type(README_FIELD, "READ.md"); // waits for the old manifest
    ui.type(README_FIELD, "README.md");
    show("Source");
    ui.type(SOURCE_FIELD, "../../other");
    show("Readme");
    EXPECT_EQ(ui.text(README_EDITOR), "other");
    show("Topics");
    EXPECT_EQ(ui.text(TOPICS + "/File Editor"), "other topic");
    ui.advance(500);
    EXPECT_NE(read_file(manifest).find("\"readme\": \"README.md\""), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(ui.dir / "other/.lumenfold"))
        << "an edit for the old manifest went into the new one";
    EXPECT_NE(read_file(file).find("\"source_path\": \"../../other\""), std::string::npos);
}

TEST_F(Documents, TopicsAreChosenEditedAndGuarded) {
    write_file(ui.dir / "src/a.md", "first");
    write_file(ui.dir / "src/b.md", "second");
    open(SOURCE,
         R"({"build": {"topics": [{"slug": "a", "label": "A", "title": "TA", "source": "a.md"},
                                          {"slug": "b", "source": "b.md"}, {}]}})");
    show("Topics");
    EXPECT_EQ(ui.options(TOPIC_COMBO), (Words{"A", "b", "Topic 3"}));
    EXPECT_EQ(ui.text(TOPICS + "/Meta Form/Title Field"), "TA");
    EXPECT_EQ(ui.text(TOPICS + "/File Editor"), "first");
    ui.type(TOPICS + "/File Editor", "typed");
    ui.choose(TOPIC_COMBO, "1");
    EXPECT_EQ(ui.selected(TOPIC_COMBO), "0");
    EXPECT_EQ(ui.question(), "Discard changes?: The Topics editor has unsaved changes. Switching "
                             "topics will discard them. [Discard]");
    ui.confirm();
    EXPECT_EQ(ui.selected(TOPIC_COMBO), "1");
    EXPECT_EQ(ui.text(TOPICS + "/File Editor"), "second");
    EXPECT_EQ(read_file(ui.dir / "src/a.md"), "first");

    ui.type(TOPICS + "/Meta Form/Label Field", "B");
    ui.advance(500);
    EXPECT_NE(read_file(manifest).find("\"slug\": \"b\",\n        \"source\": \"b.md\",\n        "
                                       "\"label\": \"B\""),
              std::string::npos)
        << read_file(manifest);

    ui.click(TOPICS + "/Selector Row/Remove Button");
    EXPECT_EQ(ui.question(), "Remove Topic: Remove topic 'B' from this project? The Markdown file "
                             "stays on disk. [Remove]");
    ui.confirm();
    EXPECT_EQ(ui.options(TOPIC_COMBO), (Words{"A", "Topic 2"}));
    EXPECT_TRUE(std::filesystem::exists(ui.dir / "src/b.md"));
}

TEST_F(Documents, ATopicIsAddedWithItsFile) {
    open(SOURCE, R"({"format": 1})");
    show("Topics");
    EXPECT_FALSE(ui.shown(TOPICS + "/Meta Form"));
    ui.click(TOPICS + "/Selector Row/Add Button");
    ui.click(TOPIC_DIALOG + "/Body/Actions/Create Button");
    EXPECT_TRUE(ui.shown(TOPIC_DIALOG));
    ui.type(TOPIC_DIALOG + "/Body/Label Editor", "First Steps!");
    EXPECT_EQ(ui.text(TOPIC_DIALOG + "/Body/Slug Editor"), "first-steps");
    EXPECT_EQ(ui.text(TOPIC_DIALOG + "/Body/Source Row/Source Editor"), "guides/first-steps.md");
    ui.click(TOPIC_DIALOG + "/Body/Actions/Create Button");
    EXPECT_FALSE(ui.shown(TOPIC_DIALOG));
    EXPECT_EQ(read_file(ui.dir / "src/guides/first-steps.md"), "# First Steps!\n");
    EXPECT_EQ(ui.options(TOPIC_COMBO), Words{"First Steps!"});
    EXPECT_EQ(ui.text(TOPICS + "/File Editor"), "# First Steps!\n");

    ui.click(TOPICS + "/Selector Row/Add Button");
    ui.type(TOPIC_DIALOG + "/Body/Label Editor", "First steps");
    ui.click(TOPIC_DIALOG + "/Body/Actions/Create Button");
    EXPECT_EQ(ui.take_message(), "Couldn't Add Topic: Topic 'first-steps' already exists.");
    EXPECT_TRUE(ui.shown(TOPIC_DIALOG));
}

TEST_F(Documents, AManifestOfALaterFormatStaysAsItIs) {
    const std::string later = R"({"format": 2, "build": {"readme": "README.md"}})";
    open(SOURCE, later);
    show("Readme");
    EXPECT_EQ(ui.text(README_FIELD), "");
    ui.type(README_FIELD, "x");
    ui.advance(500);
    show("Topics");
    ui.click(TOPICS + "/Selector Row/Add Button");
    ui.type(TOPIC_DIALOG + "/Body/Label Editor", "T");
    ui.click(TOPIC_DIALOG + "/Body/Actions/Create Button");
    EXPECT_EQ(ui.take_message(),
              "Couldn't Add Topic: declares format 2; this Lumenfold reads up to "
              "format 1 (update Lumenfold to open it)");
    EXPECT_EQ(read_file(manifest), later);
}

} // namespace
} // namespace TestSupport
