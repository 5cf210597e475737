#include "app_driver.h"
#include "site_paths.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace TestSupport {
namespace {

const std::string NO_CONFIG = "Unsupported Config: This file isn't a site or project "
                              "configuration.";

/// Every panel shown once, an edit in each kind of field, both views, and a reload.
void use_everything(AppDriver& ui) {
    for (const char* tab : {"Projects", "Socials", "Policies", "Build", "Website"})
        ui.click(section_tab(tab));
    ui.type(TITLE_FIELD, "typed");
    ui.type(LOGO_HEIGHT, "12");
    ui.type(FAVICONS + "/Background Row/Background Field", "#12");
    ui.advance(600);
    ui.click(SITE_TEXT_TAB);
    ui.click(SITE_EDITOR_TAB);
}

struct BadFile {
    std::string name;
    std::string text;
    std::string after; ///< the file at the end; "=" for unchanged
};

std::vector<BadFile> bad_files() {
    const std::string wrong_types =
        R"({"title": null, "url": 5, "description": [], "copyright": {}, "output": true,
            "branding": "x", "corvel": [], "projects": [1, null, {"config": 3}, {"config": ""}],
            "socials": [1, "s", null, {"label": 2, "external": "yes"}], "footer_links": 7,
            "policies": [3, {"name": {}, "file": []}], "home": {"sections": [1, {"type": 4}, [],
            {"type": "custom", "label": 1, "body": []}]}})";
    return {
        {"empty", "", "="},
        {"null", "null", "="},
        {"array", "[]", "="},
        {"number", "1e999", "="},
        {"binary", std::string("\x7f\x45LF\0\1\2\xff", 8), "="},
        {"invalid UTF-8", "{\"title\": \"\xc3\x28\"}", "="},
        {"blanks", std::string(1 << 20, ' '), "="},
        {"nested arrays", std::string(100000, '['), "="},
        {"nested objects in a field",
         "{\"title\": " + std::string(5000, '[') + std::string(5000, ']') + "}", "="},
        {"wrong types", wrong_types, ""},
        {"collections of other types",
         R"({"projects": {}, "socials": 1, "policies": "p", "home": []})", ""},
        {"sections of another type", R"({"home": {"sections": {"type": "custom"}}})", ""},
        {"duplicate keys", R"({"title": "a", "title": "b"})",
         "{\n  \"title\": \"typed\",\n  \"branding\": {\n    \"favicon_background\": \"#12\",\n"
         "    \"logo_height\": \"12\"\n  }\n}\n"},
    };
}

TEST(BadInput, SiteFilesOpenWithoutHarm) {
    for (const BadFile& row : bad_files()) {
        SCOPED_TRACE(row.name);
        AppDriver ui;
        const auto file = ui.dir / ".lumenfold-site";
        write_file(file, row.text);
        ui.start({file});
        EXPECT_EQ(ui.take_message(), "");
        ASSERT_TRUE(ui.shown(TITLE_FIELD));
        use_everything(ui);
        if (row.after == "=")
            EXPECT_TRUE(read_file(file) == row.text);
        else if (!row.after.empty())
            EXPECT_EQ(read_file(file), row.after);
        else
            EXPECT_NE(read_file(file).find("\"title\": \"typed\""), std::string::npos);
    }
}

TEST(BadInput, ProjectFilesOpenWithoutHarm) {
    for (const char* text :
         {"", "null", "[]", "{", R"({"slug": 1, "name": null, "build": "x", "facts": [1, null],
            "versions": {}, "requires": [[]], "downloads": "d", "repo": 3, "logo": []})"}) {
        SCOPED_TRACE(text);
        AppDriver ui;
        const auto file = ui.dir / ".lumenfold-project";
        write_file(file, text);
        ui.start({file});
        EXPECT_TRUE(ui.shown(PROJECT + "/Editor Panel/Panels/Project Panel"));
        ui.click(PROJECT + "/View Bar/Text View Tab");
        EXPECT_EQ(ui.text(PROJECT + "/Text Panel/Text Editor"), text);
    }
}

TEST(BadInput, OtherFilesAreRefused) {
    struct Case {
        std::string name, text, message;
    };
    const Case cases[] = {
        {"missing", "", NO_CONFIG},
        {"notes.txt", "hello", NO_CONFIG},
        {"list.json", "[]", NO_CONFIG},
        {"manifest.json", R"({"includes": []})", NO_CONFIG},
        {"picture.png", std::string("\x89PNG\0\0", 6), NO_CONFIG},
        {"later.json", R"({"slug": "a", "format": 2})",
         "Unsupported Config: later.json declares format 2; this Lumenfold reads up to format 1 "
         "(update Lumenfold to open it)."},
        {"old.json", R"({"slug": "a", "format": 0})",
         "Unsupported Config: old.json declares format 0; this Lumenfold reads up to format 1."},
        {"float.json", R"({"branding": {}, "format": 1.5})",
         "Unsupported Config: float.json 'format' must be an integer (this Lumenfold reads up to "
         "format 1)."},
    };
    AppDriver ui;
    ui.start();
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        if (!row.text.empty())
            write_file(ui.dir / row.name, row.text);
        ui.platform.next_picks = {(ui.dir / row.name).string()};
        ui.click(HOME + "/Open Button");
        EXPECT_EQ(ui.take_message(), row.message);
    }
    ui.platform.next_picks = {ui.dir.path().string()};
    ui.click(HOME + "/Open Button");
    EXPECT_EQ(ui.take_message(), NO_CONFIG);
    EXPECT_EQ(ui.rows(LEFT_TABS).size(), 0u);
    EXPECT_TRUE(ui.shown(HOME));
}

TEST(BadInput, AMissingSiteAndAFolderOfItsNameComeUpEmpty) {
    AppDriver ui;
    std::filesystem::create_directories(ui.dir / "b/.lumenfold-site");
    ui.start({ui.dir / "a/.lumenfold-site", ui.dir / "b/.lumenfold-site"});
    EXPECT_EQ(ui.rows(LEFT_TABS).size(), 2u);
    use_everything(ui);
    EXPECT_TRUE(std::filesystem::is_directory(ui.dir / "b/.lumenfold-site"));
    EXPECT_FALSE(std::filesystem::exists(ui.dir / "a"));
}

TEST(BadInput, AFileDeletedWhileOpenStaysDeleted) {
    AppDriver ui;
    const auto file = ui.dir / ".lumenfold-site";
    write_file(file, R"({"title": "A"})");
    ui.start({file});
    std::filesystem::remove(file);
    use_everything(ui);
    ui.click(SITE_TEXT_TAB);
    EXPECT_EQ(ui.text(SITE_TEXT), "");
    EXPECT_FALSE(std::filesystem::exists(file));
}

/// Works as a user without rights for its lifetime; root may write anything.
class Unprivileged {
public:
    Unprivileged() {
        if (::geteuid() == 0)
            dropped_ = ::seteuid(65534) == 0;
    }
    ~Unprivileged() {
        if (dropped_ && ::seteuid(0) != 0)
            std::abort();
    }

private:
    bool dropped_ = false;
};

TEST(BadInput, AReadOnlyFileKeepsItsBytes) {
    AppDriver ui;
    const auto file = ui.dir / ".lumenfold-site";
    const std::string text = R"({"title": "A", "policies": [{"name": "P", "file": "p.md"}]})";
    write_file(file, text);
    write_file(ui.dir / "p.md", "old");
    std::filesystem::permissions(ui.dir.path(), std::filesystem::perms(0555));
    std::filesystem::permissions(file, std::filesystem::perms(0444));
    std::filesystem::permissions(ui.dir / "p.md", std::filesystem::perms(0444));
    {
        const Unprivileged user;
        ui.start({file});
        use_everything(ui);
        ui.click(SITE_TEXT_TAB);
        ui.type(SITE_TEXT, "{}");
        ui.click(SITE_SAVE);
        EXPECT_EQ(ui.text(SITE_STATUS), "Unsaved changes");
        ui.click(SITE_EDITOR_TAB);
        ui.confirm();
        ui.click(section_tab("Policies"));
        ui.type(POLICY_EDITOR, "new");
        ui.click(POLICY_SAVE);
        EXPECT_EQ(ui.text(POLICY_STATUS), "Unsaved changes");
        EXPECT_EQ(ui.take_message(), "");
    }
    EXPECT_EQ(read_file(file), text);
    EXPECT_EQ(read_file(ui.dir / "p.md"), "old");
}

} // namespace
} // namespace TestSupport
