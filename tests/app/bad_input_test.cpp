// Files that no person would write, each opened, edited in every kind of field and left.
#include "app/panels/tab_preview.h"
#include "app_driver.h"
#include "site/json_file.h"
#include "support/read_only.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace TestSupport {
namespace {

void use_every_panel(AppDriver& ui) {
    for (const char* tab : {"Projects", "Socials", "Policies", "Build", "Website"})
        ui.click(std::string("Sidebar/") + tab + " Tab");
    ui.type("Site Form/Title Field", "typed");
    ui.type("Logo Height Field", "12");
    ui.type("Background Field", "#12");
    ui.advance(600);
    ui.click("Text View Tab");
    ui.click("Editor View Tab");
}

struct BadFile {
    std::string name;
    std::string text;
    std::string after = "="; ///< at the end; "=" for unchanged, "" for anything with the title
};

TEST(BadInput, SiteFilesOpenWithoutHarm) {
    const std::string wrong_types =
        R"({"title": null, "url": 5, "description": [], "copyright": {}, "output": true,
            "branding": "x", "corvel": [], "projects": [1, null, {"config": 3}, {"config": ""}],
            "socials": [1, "s", null, {"label": 2, "external": "yes"}], "footer_links": 7,
            "policies": [3, {"name": {}, "file": []}], "home": {"sections": [1, {"type": 4}, [],
            {"type": "custom", "label": 1, "body": []}]}})";
    const BadFile files[] = {
        {"empty", ""},
        {"null", "null"},
        {"array", "[]"},
        {"number", "1e999"},
        {"binary", std::string("\x7f\x45LF\0\1\2\xff", 8)},
        {"invalid UTF-8", "{\"title\": \"\xc3\x28\"}"},
        {"megabytes of blanks", std::string(4 << 20, ' ')},
        {"nested arrays", std::string(100'000, '[')},
        {"closed nested arrays", std::string(100'000, '[') + std::string(100'000, ']')},
        {"depth in a field",
         "{\"title\": " + std::string(5000, '[') + std::string(5000, ']') + "}"},
        {"wrong types", wrong_types, ""},
        {"lists of other types", R"({"projects": {}, "socials": 1, "policies": "p", "home": []})",
         ""},
        {"sections of another type", R"({"home": {"sections": {"type": "custom"}}})", ""},
        {"duplicate keys", R"({"title": "a", "title": "b"})",
         "{\n  \"title\": \"typed\",\n  \"branding\": {\n    \"favicon_background\": \"#12\",\n"
         "    \"logo_height\": \"12\"\n  }\n}\n"},
    };
    for (const BadFile& row : files) {
        SCOPED_TRACE(row.name);
        AppDriver ui;
        const auto file = ui.dir / ".lumenfold-site";
        write_file(file, row.text);
        ui.start({file});
        use_every_panel(ui);
        EXPECT_EQ(ui.take_message() + ui.question(), "");
        const std::string after = read_file(file);
        if (row.after.empty())
            EXPECT_NE(after.find("\"title\": \"typed\""), std::string::npos);
        else
            EXPECT_TRUE(after == (row.after == "=" ? row.text : row.after)) << after.substr(0, 500);
    }
}

TEST(BadInput, ProjectFilesAndManifestsOpenWithoutHarm) {
    const std::string plain = R"({"slug": "p"})";
    const std::string wrong_types =
        R"({"slug": 1, "name": null, "build": "x", "facts": [1, null, {"preset": []}],
            "versions": {}, "requires": [[]], "downloads": "d", "repo": 3, "logo": []})";
    const std::string wrong_manifest =
        R"({"build": {"readme": 5, "license": [], "topics": [1, null, {"source": {}, "label": 2}]}})";
    const std::pair<std::string, std::string> files[] = {{"", ""},
                                                         {"null", "null"},
                                                         {"[]", "[]"},
                                                         {"{", "{"},
                                                         {plain, "\xff"},
                                                         {plain, R"({"build": "x"})"},
                                                         {wrong_types, plain},
                                                         {plain, wrong_manifest},
                                                         {plain, std::string(100'000, '[')}};
    for (const auto& [project, manifest] : files) {
        SCOPED_TRACE(project + " and " + manifest.substr(0, 100));
        AppDriver ui;
        write_file(ui.dir / ".lumenfold-project", project);
        write_file(ui.dir / ".lumenfold", manifest);
        ui.start({ui.dir / ".lumenfold-project"});
        for (const char* tab :
             {"Source", "License", "Topics", "Dependencies", "Versions", "Downloads", "Build"})
            ui.click(std::string("Sidebar/") + tab + " Tab");
        ui.click("Sidebar/Readme Tab");
        ui.type("Readme Path Field", "READ.md");
        ui.advance(600);
        ui.click("Text View Tab");
        EXPECT_EQ(ui.text("Text Panel/Text Editor"), project);
        EXPECT_EQ(ui.take_message() + ui.question(), "");
        const std::string after = read_file(ui.dir / ".lumenfold");
        EXPECT_TRUE(after == manifest || after.find("\"READ.md\"") != std::string::npos ||
                    Lumenfold::parse_json(after) == Lumenfold::parse_json(manifest))
            << after;
    }
}

TEST(BadInput, AMissingSiteAFolderAndADeletedFileStayWhatTheyAre) {
    AppDriver ui;
    const auto deleted = ui.dir / "c/.lumenfold-site";
    std::filesystem::create_directories(ui.dir / "b/.lumenfold-site");
    write_file(deleted, "{}");
    ui.start({ui.dir / "a/.lumenfold-site", ui.dir / "b/.lumenfold-site", deleted});
    std::filesystem::remove(deleted);
    for (const char* tab : {"config-3", "config-1", "config-2"}) {
        ui.row_action(tab, "activate");
        use_every_panel(ui);
    }
    EXPECT_EQ(ui.take_message(), "");
    EXPECT_FALSE(std::filesystem::exists(ui.dir / "a"));
    EXPECT_FALSE(std::filesystem::exists(deleted));
    EXPECT_TRUE(std::filesystem::is_directory(ui.dir / "b/.lumenfold-site"));
}

TEST(BadInput, ReadOnlyFilesKeepTheirBytes) {
    AppDriver ui;
    const std::string text = R"({"title": "A", "policies": [{"name": "P", "file": "p.md"}],
        "home": {"sections": [{"type": "custom", "label": "C", "body": "/c.html"}]}})";
    const std::map<std::string, std::string> files = {
        {".lumenfold-site", text}, {"p.md", "old"}, {"c.html", "old"}, {"l.svg", "<svg/>"}};
    for (const auto& [name, content] : files)
        write_file(ui.dir / name, content);
    {
        const ReadOnly read_only(ui.dir.path());
        ui.start({ui.dir / ".lumenfold-site"});
        use_every_panel(ui);
        ui.platform.next_picks = {(ui.dir / "l.svg").string()};
        ui.click("Website Panel/Logo Picker/Controls Row/Browse Button");
        EXPECT_FALSE(ui.shown("Website Panel/Logo Picker/Avatar/Logo Image"));
        ui.click("Layout Header/Add Button");
        ui.type("Label Editor", "New");
        ui.click("Create Button");
        EXPECT_EQ(ui.take_message(),
                  "Couldn't Add Section: Could not create the section's content file.");
        ui.click("Cancel Button");
        ui.row_action("home-0", "edit");
        ui.type("Editor Group/File Editor", "new");
        ui.click("Editor Group/File Status Bar/Save Button");
        EXPECT_EQ(ui.text("Editor Group/File Status Bar/Status Message"), "Unsaved changes");
        ui.click("Done Button");
        ui.click("Confirm Dialog/Body/Actions/Confirm Button");
        ui.click("Sidebar/Socials Tab");
        ui.click("Add Social Button");
        ui.type("Label Editor", "L");
        ui.type("URL Editor", "U");
        ui.click("Create Button");
        EXPECT_EQ(ui.take_message(), "Couldn't Add Social Link: Cannot write config file: " +
                                         (ui.dir / ".lumenfold-site").string());
        ui.click("Cancel Button");
        ui.click("Text View Tab");
        ui.type("Text Panel/Text Editor", "{}");
        ui.click("Text Panel/Status Bar/Save Button");
        EXPECT_EQ(ui.text("Text Panel/Status Bar/Status Message"), "Unsaved changes");
        ui.click("Editor View Tab");
        ui.click("Confirm Dialog/Body/Actions/Confirm Button");
        ui.click("Sidebar/Policies Tab");
        ui.type("File Editor", "new");
        ui.click("File Status Bar/Save Button");
        EXPECT_EQ(ui.text("File Status Bar/Status Message"), "Unsaved changes");
        EXPECT_EQ(ui.take_message(), "");
    }
    EXPECT_EQ(file_tree(ui.dir.path()), files);
}

TEST(LogoHeight, IsCheckedWhenTypedAndReadWithAFallback) {
    using Lumenfold::is_valid_height;
    for (const char* good :
         {"", "0", "7", "40", "040", "000", "40px", "40PX", "40pX", "12p", "12P"})
        EXPECT_TRUE(is_valid_height(good)) << good;
    for (const char* bad : {"41", "1234", "0040", "px", "p", "-1", "4 0", " 4", "4 px", "4pxx",
                            "4x", "4p ", "4.0", "x", "4em", "999999999999999999999"})
        EXPECT_FALSE(is_valid_height(bad)) << bad;
    const std::pair<const char*, int> stored[] = {
        {"", 25},     {"30", 30}, {" 30px\t", 30}, {"30PX", 30},  {"999", 999},
        {"1000", 25}, {"px", 25}, {"3p", 25},      {"30 px", 25}, {"-3", 25}};
    for (const auto& [text, pixels] : stored)
        EXPECT_EQ(Lumenfold::parse_height(text, 25), pixels) << text;
}

} // namespace
} // namespace TestSupport
