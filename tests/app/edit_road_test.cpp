#include "app_driver.h"
#include "site_paths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace TestSupport {
namespace {

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

struct EditRoad : testing::Test {
    AppDriver ui;
    std::filesystem::path file = ui.dir / "site/.lumenfold-site";

    void open(const std::string& text) {
        write_file(file, text);
        ui.start({file});
    }
};

TEST_F(EditRoad, ChangesOneLineOfTheExampleAndKeepsTheRest) {
    const auto site = copy_example(ui.dir / "example");
    const std::string before = read_file(site);
    ui.start({site});
    ui.type(TITLE_FIELD, "Tide & \"Water\" 潮");
    ui.advance(499);
    EXPECT_EQ(read_file(site), before);
    ui.advance(1);
    const auto old_lines = lines_of(before);
    const auto new_lines = lines_of(read_file(site));
    ASSERT_EQ(old_lines.size(), new_lines.size());
    std::vector<std::string> changed;
    for (std::size_t i = 0; i < old_lines.size(); ++i)
        if (old_lines[i] != new_lines[i])
            changed.push_back(new_lines[i]);
    EXPECT_EQ(changed, std::vector<std::string>{"  \"title\": \"Tide & \\\"Water\\\" 潮\","});
    ui.click(SITE_TEXT_TAB);
    EXPECT_EQ(ui.text(SITE_TEXT), read_file(site));
    EXPECT_EQ(ui.text(SITE_STATUS), "");
}

TEST_F(EditRoad, WritesABurstOnceWithTheLastValues) {
    open(R"({"x": [1], "title": "A", "branding": null})");
    ui.type(TITLE_FIELD, "B");
    ui.advance(400);
    ui.type(TITLE_FIELD, "C");
    ui.type(TAB_TEXT, "tab");
    ui.advance(499);
    EXPECT_EQ(read_file(file), R"({"x": [1], "title": "A", "branding": null})");
    ui.advance(1);
    EXPECT_EQ(read_file(file), "{\n  \"x\": [\n    1\n  ],\n  \"title\": \"C\",\n"
                               "  \"branding\": {\n    \"tab_text\": \"tab\"\n  }\n}\n");
    write_file(file, "{}");
    ui.advance(5000); // stale timers write nothing
    EXPECT_EQ(read_file(file), "{}");
}

TEST_F(EditRoad, KeepsEditsWhileTheFileCannotBeRead) {
    open(R"({"title": "A"})");
    ui.type(TITLE_FIELD, "B");
    write_file(file, "{ not yet");
    ui.advance(500);
    EXPECT_EQ(read_file(file), "{ not yet");
    write_file(file, R"({"url": "other"})"); // another program has finished writing
    ui.type(TAB_TEXT, "t");
    ui.advance(500);
    EXPECT_EQ(read_file(file), "{\n  \"url\": \"other\",\n  \"branding\": {\n"
                               "    \"tab_text\": \"t\"\n  },\n  \"title\": \"B\"\n}\n");
}

TEST_F(EditRoad, DropsOnlyTheEditThatDoesNotFitTheFile) {
    open(R"({"branding": "x", "title": "A"})");
    ui.type(LOGO_HEIGHT, "30px");
    ui.type(TITLE_FIELD, "B");
    ui.advance(500);
    EXPECT_EQ(read_file(file), "{\n  \"branding\": \"x\",\n  \"title\": \"B\"\n}\n");
}

TEST_F(EditRoad, TellsTheLineOfInvalidJson) {
    open("{\n  \"title\": \"A\"\n}\n");
    ui.click(SITE_TEXT_TAB);
    struct Case {
        std::string text, status;
        bool saves, invalid;
    };
    const Case cases[] = {
        {"{\n  \"title\": \"A\",\n  oops\n}\n", "Invalid JSON — line 3: syntax error", false, true},
        {"", "Invalid JSON — line 1: ", false, true},
        {"{\"a\": 1e999}",
         "Invalid JSON — line 1: [json.exception.out_of_range.406] number overflow", false, true},
        {"{\n\n\"a\": \"\xff\"}", "Invalid JSON — line 3: ", false, true},
        {"[]", "Unsaved changes", true, false},
        {"{\n  \"title\": \"A\"\n}\n", "", false, false},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.text);
        ui.type(SITE_TEXT, row.text);
        EXPECT_EQ(ui.text(SITE_STATUS).substr(0, row.status.size()), row.status);
        EXPECT_EQ(ui.text(SITE_STATUS).empty(), row.status.empty());
        EXPECT_EQ(ui.has_state(SITE_SAVE, "Disabled"), !row.saves);
        EXPECT_EQ(ui.has_state(SITE + "/Text Panel/Status Bar", "Invalid"), row.invalid);
    }
}

TEST_F(EditRoad, SavesTheTextAsTypedAndRefillsTheForm) {
    open(R"({"title": "A"})");
    ui.click(SITE_TEXT_TAB);
    const std::string typed = "{\"title\" :\r\n  \"B\" }  ";
    ui.type(SITE_TEXT, typed);
    ui.click(SITE_SAVE);
    EXPECT_EQ(read_file(file), typed);
    EXPECT_EQ(ui.text(SITE_STATUS), "");
    EXPECT_TRUE(ui.has_state(SITE_SAVE, "Disabled"));
    ui.click(SITE_EDITOR_TAB);
    EXPECT_EQ(ui.question(), "");
    EXPECT_EQ(ui.text(TITLE_FIELD), "B");
}

TEST_F(EditRoad, AsksBeforeTheTextViewIsLeft) {
    open(R"({"title": "A"})");
    ui.click(SITE_TEXT_TAB);
    ui.type(SITE_TEXT, "[1]");
    ui.click(SITE_EDITOR_TAB);
    EXPECT_EQ(ui.question(), "Discard changes?: The Text view has unsaved changes. Switching to "
                             "the Editor will discard them. [Discard]");
    ui.cancel();
    EXPECT_EQ(ui.text(SITE_TEXT), "[1]");
    ui.click(SITE_EDITOR_TAB);
    ui.confirm();
    EXPECT_TRUE(ui.shown(TITLE_FIELD));
    ui.click(SITE_TEXT_TAB);
    EXPECT_EQ(ui.text(SITE_TEXT), R"({"title": "A"})");
}

TEST_F(EditRoad, SwitchingToTextWritesTheFormFirst) {
    open(R"({"title": "A"})");
    ui.type(TITLE_FIELD, "B");
    ui.click(SITE_TEXT_TAB);
    EXPECT_EQ(ui.text(SITE_TEXT), "{\n  \"title\": \"B\"\n}\n");
    EXPECT_EQ(ui.text(SITE_STATUS), "");
    EXPECT_TRUE(ui.has_state(SITE_TEXT_TAB, "Active"));
    EXPECT_FALSE(ui.has_state(SITE_EDITOR_TAB, "Active"));
}

} // namespace
} // namespace TestSupport
