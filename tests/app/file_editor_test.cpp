#include "app_driver.h"
#include "site_paths.h"

#include <gtest/gtest.h>

namespace TestSupport {
namespace {

constexpr const char* SITE_TEXT_WITH_POLICIES =
    R"({"title": "S", "policies": [
        {"slug": "a", "name": "A", "title": "TA", "file": "/policies/a.md"},
        {"slug": "b", "file": "policies/none.md"},
        {"title": "no name"}],
        "socials": [{"label": "one", "url": "u"}],
        "home": {"sections": [{"type": "custom", "label": "C", "body": "/f/c.html"}]}})";

/// The policies' editor stands for all five, which share their code.
struct FileEditors : testing::Test {
    AppDriver ui;
    std::filesystem::path file = ui.dir / ".lumenfold-site";
    std::filesystem::path policy = ui.dir / "policies/a.md";

    FileEditors() {
        write_file(file, SITE_TEXT_WITH_POLICIES);
        write_file(policy, "old");
        write_file(ui.dir / "f/c.html", "fragment");
        ui.start({file});
        ui.click(section_tab("Policies"));
    }
    void expect(const std::string& text, const std::string& status, bool locked, bool saves) {
        EXPECT_EQ(ui.text(POLICY_EDITOR), text);
        EXPECT_EQ(ui.text(POLICY_STATUS), status);
        EXPECT_EQ(ui.has_state(POLICY_EDITOR, "Locked"), locked);
        EXPECT_EQ(ui.has_state(POLICY_SAVE, "Disabled"), !saves);
    }
};

TEST_F(FileEditors, GoThroughTheirStates) {
    expect("old", "", false, false);
    ui.type(POLICY_EDITOR, "new\n");
    expect("new\n", "Unsaved changes", false, true);
    ui.type(POLICY_EDITOR, "old");
    expect("old", "", false, false);
    ui.type(POLICY_EDITOR, "newer");
    ui.click(POLICY_SAVE);
    expect("newer", "", false, false);
    EXPECT_EQ(read_file(policy), "newer");
    ui.choose(POLICY_COMBO, "1");
    expect("", "Policy file not found", true, false);
    ui.choose(POLICY_COMBO, "2");
    expect("", "", true, false);
    ui.choose(POLICY_COMBO, "0");
    expect("newer", "", false, false);
    std::filesystem::remove(policy);
    std::filesystem::create_directories(policy);
    ui.type(POLICIES + "/Meta Form/File Field", "policies/a.md");
    expect("", "Policy file not found", true, false);
}

TEST_F(FileEditors, WrapLinesUnlessUnchecked) {
    const std::string box = POLICIES + "/File Status Bar/Wrap Checkbox";
    EXPECT_TRUE(ui.app->is_checked(box));
    ui.click(box);
    EXPECT_FALSE(ui.app->is_checked(box));
    EXPECT_TRUE(ui.has_state(POLICY_EDITOR, "NoWrap"));
    ui.click(box);
    EXPECT_FALSE(ui.has_state(POLICY_EDITOR, "NoWrap"));
}

TEST_F(FileEditors, BytesThatAreNoTextStayUntilTheyAreEdited) {
    write_file(policy, "caf\xe9\r\n");
    ui.choose(POLICY_COMBO, "1");
    ui.choose(POLICY_COMBO, "0");
    expect("caf\xe9\r\n", "", false, false);
}

TEST_F(FileEditors, AskBeforeAnotherPolicyIsShown) {
    ui.type(POLICY_EDITOR, "new");
    ui.choose(POLICY_COMBO, "1");
    EXPECT_EQ(ui.question(), "Discard changes?: The Policies editor has unsaved changes. Switching "
                             "policies will discard them. [Discard]");
    EXPECT_EQ(ui.app->selected(POLICY_COMBO), "0"); // what the view sets its combo box back to
    ui.cancel();
    EXPECT_EQ(ui.text(POLICIES + "/Meta Form/Name Field"), "A");
    expect("new", "Unsaved changes", false, true);
    ui.choose(POLICY_COMBO, "1");
    ui.confirm();
    expect("", "Policy file not found", true, false);
    EXPECT_EQ(ui.selected(POLICY_COMBO), "1");
    EXPECT_EQ(read_file(policy), "old");
}

TEST_F(FileEditors, DiscardAlsoBetweenPoliciesOfOneFile) {
    write_file(file, R"({"policies": [{"file": "policies/a.md"}, {"file": "policies/a.md"}]})");
    ui.click(SITE_TEXT_TAB);
    ui.click(SITE_EDITOR_TAB);
    ui.type(POLICY_EDITOR, "new");
    ui.choose(POLICY_COMBO, "1");
    ui.confirm();
    expect("old", "", false, false);
}

TEST_F(FileEditors, AskBeforeTheTextViewAndDiscard) {
    ui.type(POLICY_EDITOR, "new");
    ui.click(SITE_TEXT_TAB);
    EXPECT_EQ(ui.question(), "Discard changes?: The Policies editor has unsaved changes. Switching "
                             "views will discard them. [Discard]");
    ui.cancel();
    EXPECT_FALSE(ui.shown(SITE_TEXT));
    expect("new", "Unsaved changes", false, true);
    ui.click(SITE_TEXT_TAB);
    ui.confirm();
    EXPECT_TRUE(ui.shown(SITE_TEXT));
    ui.click(SITE_EDITOR_TAB);
    expect("old", "", false, false);
}

TEST_F(FileEditors, KeepTheirTextWhenAnotherListChanges) {
    ui.type(POLICY_EDITOR, "new");
    ui.click(section_tab("Socials"));
    ui.row_action(SOCIALS + "/Social Cards/social-0", "remove");
    ui.confirm();
    EXPECT_EQ(ui.rows(SOCIALS + "/Social Cards").size(), 0u);
    ui.click(section_tab("Policies"));
    expect("new", "Unsaved changes", false, true);
    ui.click(POLICY_SAVE);
    EXPECT_EQ(read_file(policy), "new");
}

TEST_F(FileEditors, SectionContentIsDiscardedForGood) {
    ui.click(section_tab("Website"));
    const std::string card = WEBSITE + "/Home Layout/Section Cards/home-0";
    ui.row_action(card, "edit");
    EXPECT_EQ(ui.text(SECTION_DIALOG + "/Titlebar/Title"), "Edit: C");
    EXPECT_EQ(ui.text(SECTION_EDITOR), "fragment");
    ui.type(SECTION_EDITOR, "typed");
    ui.click(SECTION_DIALOG + "/Body/Done Row/Done Button");
    EXPECT_EQ(ui.question(), "Discard changes?: This section's content has unsaved changes. "
                             "Discard them? [Discard]");
    ui.cancel();
    EXPECT_EQ(ui.text(SECTION_EDITOR), "typed");
    ui.click(SECTION_DIALOG + "/Titlebar/Exit Button");
    ui.confirm();
    EXPECT_FALSE(ui.shown(SECTION_DIALOG));
    ui.click(SITE_TEXT_TAB); // nothing is left to ask about
    EXPECT_EQ(ui.question(), "");
    ui.click(SITE_EDITOR_TAB);
    ui.row_action(card, "edit");
    EXPECT_EQ(ui.text(SECTION_EDITOR), "fragment");
    ui.type(SECTION_EDITOR, "kept");
    ui.click(SECTION_DIALOG + "/Body/Editor Group/File Status Bar/Save Button");
    ui.click(SECTION_DIALOG + "/Body/Done Row/Done Button");
    EXPECT_FALSE(ui.shown(SECTION_DIALOG));
    EXPECT_EQ(read_file(ui.dir / "f/c.html"), "kept");
}

/// What was typed for one configuration must never stay in the field of the next.
TEST(LiveEditors, ShowTheConfigurationThatCameUp) {
    AppDriver ui;
    const auto a = ui.dir / "a/.lumenfold-site";
    const auto b = ui.dir / "b/.lumenfold-site";
    for (const auto& file : {a, b})
        write_file(file, R"({"output": "./output"})");
    ui.start({a, b});
    ui.row_action(left_tab(1), "activate");
    ui.type(OUTPUT_FIELD, "./outputA");
    ui.row_action(left_tab(2), "activate");
    EXPECT_EQ(ui.text(OUTPUT_FIELD), "./output");
    ui.type(OUTPUT_FIELD, "./outputB");
    ui.advance(500);
    EXPECT_NE(read_file(a).find("./outputA\""), std::string::npos);
    EXPECT_NE(read_file(b).find("./outputB\""), std::string::npos);

    ui.type(LOGO_HEIGHT, "99"); // not stored, so nothing but the fill can take it away
    ui.row_action(left_tab(1), "activate");
    EXPECT_EQ(ui.text(LOGO_HEIGHT), "");
}

} // namespace
} // namespace TestSupport
