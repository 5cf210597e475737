// What the site's files say, and what is made of files that say it wrongly.
#include "site/config_files.h"
#include "site/path_text.h"
#include "site/records.h"
#include "site/site_support.h"
#include "site/versions.h"

#include <sys/stat.h>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::FileSizeLimit;
using TestSupport::normal_form;
using TestSupport::parser_words;
using TestSupport::read_file;
using TestSupport::TempDir;
using TestSupport::write_file;

std::string nested(std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
}

TEST(ParseJson, TellsWhyATextIsNoDocument) {
    const std::pair<std::string, std::size_t> cases[] = {
        {"", 1},           {"{\"a\": 1", 8}, {"{} // no", 4}, {"[1,]", 4}, {"nul", 4},
        {"[\"\xff\"]", 3}, {"{'a': 1}", 2},  {"[1e999]", 0}}; // out of range is no parse error to
                                                              // the library
    for (const auto& [text, byte] : cases) {
        SCOPED_TRACE(text);
        JsonError error;
        EXPECT_FALSE(parse_json(text, &error));
        EXPECT_EQ(error.byte, byte);
        EXPECT_EQ(error.message, parser_words(text));
    }
}

TEST(ParseJson, RefusesTheLevelAfterAThousand) {
    EXPECT_TRUE(parse_json(nested(1000)));
    JsonError error;
    EXPECT_FALSE(parse_json(nested(1001), &error));
    EXPECT_EQ(error.byte, 1001u);
    EXPECT_FALSE(parse_json(nested(3'000'000)));
    EXPECT_FALSE(parse_json(std::string(2'000'000, '{')));
    // Brackets within texts and lists side by side are no levels.
    EXPECT_TRUE(
        parse_json("[\"" + std::string(5000, '[') + "\\\"" + std::string(5000, '{') + "\"]"));
    std::string siblings = "[";
    for (int i = 0; i < 5000; ++i)
        siblings += "[{}],";
    EXPECT_TRUE(parse_json(siblings + "1]"));
}

TEST(WriteFile, ReplacesInPlaceOrLeavesTheFileAlone) {
    const TempDir dir;
    Json json = Json::object();
    json["b"] = {1, "é — \n\""};
    json["a"] = Json::object();
    write_file(dir / "file", "much longer than what comes, and of another order");
    fs::create_hard_link(dir / "file", dir / "same");
    EXPECT_TRUE(write_config_file(dir / "file", json));
    EXPECT_EQ(read_file(dir / "same"),
              "{\n  \"b\": [\n    1,\n    \"é — \\n\\\"\"\n  ],\n  \"a\": {}\n}\n");
    json["name"] = "\xc3\x28 is no UTF-8";
    EXPECT_FALSE(write_config_file(dir / "file", json));
    EXPECT_GT(fs::file_size(dir / "same"), 0u);
    EXPECT_FALSE(write_text_file(dir / "no-folder/file", "a"));
    EXPECT_FALSE(write_text_file(dir.path(), "a"));
    bool opened = false;
    bool complete = true;
    {
        const FileSizeLimit limit(3);
        opened = write_text_file(dir / "opened", "12345", WriteCheck::Opened);
        complete = write_text_file(dir / "complete", "12345", WriteCheck::Complete);
    }
    EXPECT_TRUE(opened && !complete) << "a lost tail is noticed only when asked for";
}

TEST(ReadTextFile, ReadsFilesOnly) {
    const TempDir dir;
    const std::string text = std::string(40'000, 'x') + std::string("\0\xff\r\n", 4);
    write_file(dir / "file", text);
    EXPECT_EQ(read_text_file(dir / "file"), text);
    EXPECT_EQ(read_text_file(dir / "missing"), std::nullopt);
    EXPECT_EQ(read_text_file(dir.path()), std::nullopt);
    ASSERT_EQ(::mkfifo((dir / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(read_text_file(dir / "pipe"), std::nullopt) << "and does not wait for a writer";
}

TEST(ClassifyConfig, GoesByNameThenByKeys) {
    struct Case {
        const char* name;
        const char* text;
        ConfigKind kind;
    };
    const Case cases[] = {
        {".lumenfold-site", "not JSON", ConfigKind::Site},
        {".lumenfold-project", R"({"branding": {}})", ConfigKind::Project},
        {"a", R"({"branding": null, "slug": "x"})", ConfigKind::Site},
        {"a", R"({"nav_menus": 1})", ConfigKind::Site},
        {"a", R"({"projects": []})", ConfigKind::Site},
        {"a", R"({"projects": {}, "slug": "x"})", ConfigKind::Project},
        {"a", R"({"slug": 5, "project": 1})", ConfigKind::Project},
        {"a", R"({"project": null})", ConfigKind::Manifest},
        {".lumenfold", R"({"includes": []})", ConfigKind::Manifest},
        {"a", R"({"external": 0})", ConfigKind::Manifest},
        {".lumenfold", R"({"build": {}})", ConfigKind::Unknown},
        {".lumenfold-Site", "{}", ConfigKind::Unknown},
        {"a", "[{\"slug\": 1}]", ConfigKind::Unknown},
        {"a", "{\"slug\": ", ConfigKind::Unknown},
        {"a", "{\"slug\": 1e999}", ConfigKind::Unknown},
    };
    for (const Case& c : cases) {
        const TempDir dir;
        write_file(dir / c.name, c.text);
        EXPECT_EQ(classify_config(dir / c.name), c.kind) << c.name << ": " << c.text;
    }
    EXPECT_EQ(classify_config("/no/such/.lumenfold-site"), ConfigKind::Site);
}

TEST(CheckFormat, RefusesLaterAndOddFormats) {
    const std::string integer = "'format' must be an integer (this Lumenfold reads up to format 1)";
    const std::string reads = "; this Lumenfold reads up to format 1";
    const std::string advice = " (update Lumenfold to open it)";
    const std::pair<const char*, std::string> cases[] = {
        {R"({"format": 1})", ""},
        {R"({})", ""},
        {R"([{"format": 2}])", ""},
        {R"({"format": 1.5})", integer},
        {R"({"format": 1.0})", integer},
        {R"({"format": "1"})", integer},
        {R"({"format": null})", integer},
        {R"({"format": true})", integer},
        {R"({"format": 2})", "declares format 2" + reads + advice},
        {R"({"format": 18446744073709551615})",
         "declares format 18446744073709551615" + reads + advice},
        {R"({"format": 0})", "declares format 0" + reads},
        {R"({"format": -9223372036854775808})", "declares format -9223372036854775808" + reads},
        {R"({"format": 2)", ""}, // the caller's own parser will tell
    };
    const TempDir dir;
    for (const auto& [text, words] : cases) {
        write_file(dir / "config", text);
        std::string error;
        EXPECT_EQ(check_format(dir / "config", &error), words.empty());
        EXPECT_EQ(error, words) << text;
    }
    EXPECT_TRUE(check_format(dir / "missing", nullptr));
}

TEST(ReadTitle, FallsBackOnTheFoldersName) {
    const TempDir dir;
    const fs::path file = dir / "the folder/config";
    for (const char* text : {R"({"title": ""})", R"({"title": null})", R"(["title"])", "{"}) {
        write_file(file, text);
        EXPECT_EQ(read_title(file, ConfigKind::Site), "the folder") << text;
    }
    write_file(file, R"({"title": "T", "name": "N"})");
    EXPECT_EQ(read_title(file, ConfigKind::Site), "T");
    EXPECT_EQ(read_title(file, ConfigKind::Project), "N");
    EXPECT_EQ(read_title(dir / "a/../b/.lumenfold-site", ConfigKind::Site), "b");
}

TEST(ReadProjectInfo, ReadsWhatItCan) {
    const TempDir dir;
    write_file(dir / "p/.lumenfold-project",
               R"({"slug": "s", "name": "n", "tagline": null, "parent_slug": "p",
                   "family_label": ["f"], "logo": "/images/l.svg"})");
    const ProjectInfo info = read_project_info("./p/.lumenfold-project", dir.path());
    EXPECT_EQ(info.slug + "|" + info.name + "|" + info.tagline + "|" + info.parent_slug + "|" +
                  info.family_label + "|" + info.logo,
              "s|n||p||/images/l.svg");
    for (const char* reference : {"", ".", "./missing", "../../../../../..", "p"})
        EXPECT_EQ(read_project_info(reference, dir.path()).slug, "") << reference;
}

TEST(ResolveReference, MakesFormsOfOnePathEqual) {
    const TempDir dir;
    const fs::path existing = dir / "site/p/file";
    write_file(existing, "{}");
    fs::create_directory_symlink(dir / "site", dir / "link");
    for (const char* form :
         {"p/file", "./p/file", "p//file", "./p/../p/./file", "../link/p/file", "../site/p/file"})
        EXPECT_EQ(resolve_reference(form, dir / "site"), existing) << form;
    EXPECT_EQ(resolve_reference(existing.string(), "/elsewhere"), existing);
    // Nothing there: as far as there is something, and by its letters from there on.
    for (const char* form : {"new/file", "./new//file", "new/x/../file", "../link/new/file"})
        EXPECT_EQ(resolve_reference(form, dir / "site"), dir / "site/new/file") << form;
    fs::create_symlink(dir / "loop", dir / "loop");
    EXPECT_EQ(resolve_reference("loop/x", dir.path()), dir / "loop/x");
    const std::string endless(5000, 'n');
    EXPECT_EQ(resolve_reference(endless, dir.path()), dir / endless);
}

TEST(ResolveImage, FindsFilesBelowTheRoot) {
    const TempDir dir;
    const fs::path logo = dir / "images/logo é.svg";
    const fs::path project = dir / "projects/p";
    write_file(logo, "<svg/>");
    for (const char* reference :
         {"/images/logo é.svg", "images/logo é.svg", "///images/logo é.svg"})
        EXPECT_EQ(resolve_image(dir.path(), reference), logo) << reference;
    for (const char* reference : {"", "/", "///", "/images", "/images/other.svg"})
        EXPECT_EQ(resolve_image(dir.path(), reference), "") << reference;

    write_file(project / "own.svg", "own");
    write_file(project / "images/logo é.svg", "project");
    EXPECT_EQ(find_site_above(project), project) << "no site: the folder that was given";
    EXPECT_EQ(resolve_project_logo(project, "/images/logo é.svg"), project / "images/logo é.svg");
    write_file(dir / ".lumenfold-site", "{}");
    EXPECT_EQ(find_site_above(project / "missing/.."), dir.path());
    EXPECT_EQ(resolve_project_logo(project, "/images/logo é.svg"), logo);
    EXPECT_EQ(resolve_project_logo(project, "own.svg"), project / "own.svg");
    EXPECT_EQ(resolve_project_logo(project, "none.svg"), "");
}

TEST(ReadBuiltRecord, SaysWhyNot) {
    const TempDir dir;
    const std::string file = (dir / ".lumenfold-built").string();
    const std::string invalid = "Invalid JSON in " + file + ": ";
    const std::pair<const char*, std::string> cases[] = {
        {nullptr, "No .lumenfold-built in " + dir.path().string()},
        {"{\"tag\"", invalid + parser_words("{\"tag\"")},
        {"[1e999]", invalid + parser_words("[1e999]")},
        {R"({"format": 2, "tag": "1.0.0"})",
         "declares format 2; this Lumenfold reads up to format 1 (update Lumenfold to open it)"},
        {R"({"commit": "c"})", file + " records no tag"},
        {R"({"tag": null})", file + " records no tag"},
        {R"(["tag"])", file + " records no tag"},
    };
    BuiltRecord record;
    std::string error;
    for (const auto& [text, words] : cases) {
        if (text)
            write_file(file, text);
        EXPECT_FALSE(read_built_record(dir.path(), record, &error));
        EXPECT_EQ(error, words);
    }
    write_file(file, R"({"tag": "1.2.3", "commit": 5, "built": "2026-01-02"})");
    ASSERT_TRUE(read_built_record(dir.path(), record, nullptr));
    EXPECT_EQ(record.tag + "|" + record.commit + "|" + record.built, "1.2.3||2026-01-02");
}

TEST(LoadManifest, SaysWhyNot) {
    const TempDir dir;
    const fs::path file = dir / ".lumenfold";
    const std::pair<const char*, std::string> cases[] = {
        {nullptr, "No .lumenfold manifest at " + file.string() +
                      " — the project's source root declares its own build block "
                      "(readme/topics/includes) there"},
        {"{\"a\"}", "Invalid JSON in " + file.string() + ": " + parser_words("{\"a\"}")},
        {"{\"format\": 0}", "declares format 0; this Lumenfold reads up to format 1"},
    };
    Json json = "before";
    std::string error;
    for (const auto& [text, words] : cases) {
        if (text)
            write_file(file, text);
        EXPECT_FALSE(load_manifest(file, json, &error));
        EXPECT_EQ(error, words);
        EXPECT_EQ(json, "before");
    }
    const char* paths[][3] = {{"/s/p", "", "/s/p/.lumenfold"},
                              {"/s/p//\\/", "src", "/s/p/src/.lumenfold"},
                              {"/s/p", "../src/", "/s/p/../src/.lumenfold"},
                              {"/s/p", "/src", "/src/.lumenfold"},
                              {"/", "", "/.lumenfold"},
                              {"//", "src", "/src/.lumenfold"},
                              {"", "", ".lumenfold"}};
    for (const auto& [folder, source, path] : paths)
        EXPECT_EQ(manifest_path(folder, source).string(), path) << folder << " with " << source;
}

TEST(DiscoverVersions, ListsEveryFolder) {
    const TempDir dir;
    const fs::path versions = dir / "versions";
    EXPECT_TRUE(discover_versions(dir.path()).empty());
    write_file(versions / "1.9/.lumenfold-built", R"({"tag": "1.9.4"})");
    write_file(versions / "1.10/.lumenfold-built", R"({"tag": "1.10.0", "format": 1})");
    write_file(versions / "2.0/.lumenfold-built", R"({"tag": "2.0.0", "format": 2})");
    fs::create_directories(versions / "empty/.lumenfold-built");
    write_file(versions / "a file", "");
    fs::create_directory_symlink(versions / "1.9", versions / "latest");
    fs::create_symlink(versions / "nowhere", versions / "dangling");
    std::string listed;
    for (const VersionEntry& entry : discover_versions(dir.path()))
        listed += entry.name + "=" + entry.tag + " ";
    EXPECT_EQ(listed, "1.10=1.10.0 1.9=1.9.4 2.0= empty= latest=1.9.4 ");
    EXPECT_EQ(newest_version(discover_versions(dir.path())), "2.0");
    EXPECT_EQ(newest_version({{"alpha", ""}, {"beta", ""}}), "beta");
}

TEST(VersionNewer, OrdersMajorMinorLabelsOnly) {
    struct Case {
        const char* a;
        const char* b;
        bool newer, older;
    };
    // clang-format off
    const Case cases[] = {
        {"1.10", "1.9", true, false}, {"2.0", "1.99", true, false}, {"1.2", "01.02", false, false},
        {"1.2.3", "1.2.9", false, false}, {"nightly", "x", false, false},
        {"1.2", "nightly", true, false}, {"1.2", "1.2.3", true, false}, {"0.0", "9", true, false},
        {"0.1", "", true, false}, {"0.1", "1.", true, false}, {"0.1", ".1", true, false},
        {"0.1", "1.2 ", true, false}, {"0.1", "v1.2", true, false}, {"0.1", "-1.2", true, false},
        {"0.1", "+1.2", true, false}, {"999999999.0", "999999998.999999999", true, false},
        {"0.1", "1000000000.1", true, false}, // ten digits
    };
    // clang-format on
    for (const Case& c : cases) {
        EXPECT_EQ(version_newer(c.a, c.b), c.newer) << c.a << " newer than " << c.b;
        EXPECT_EQ(version_newer(c.b, c.a), c.older) << c.b << " newer than " << c.a;
    }
}

} // namespace
} // namespace Lumenfold
