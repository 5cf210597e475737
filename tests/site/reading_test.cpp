// What the site's files say, and what is made of files that say it wrongly.
#include "site/config_files.h"
#include "site/creation.h"
#include "site/path_text.h"
#include "site/records.h"
#include "site/site_support.h"
#include "site/versions.h"

#include <fstream>
#include <map>
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

using Answer = std::string (*)(const std::string& first, const std::string& second);

/// The folder's only file with this text.
fs::path file_of(const TempDir& dir, const std::string& text) {
    write_file(dir / "the folder/config", text);
    return dir / "the folder/config";
}

std::string kind_of(const std::string& name, const std::string& text) {
    const TempDir dir;
    write_file(dir / name, text);
    const char* kinds[] = {"site", "project", "manifest", "unknown"};
    return kinds[static_cast<int>(classify_config(dir / name))];
}

std::string format_words(const std::string& text, const std::string&) {
    const TempDir dir;
    std::string error;
    const bool passes = check_format(file_of(dir, text), &error);
    EXPECT_EQ(passes, error.empty());
    return error;
}

std::string section_types(const std::string& text, const std::string&) {
    const TempDir dir;
    std::string types;
    for (const std::string& type : read_home_sections(file_of(dir, text)))
        types += type + ",";
    return types;
}

std::string newer_of(const std::string& a, const std::string& b) {
    EXPECT_FALSE(version_newer(a, b) && version_newer(b, a));
    return version_newer(a, b) ? "first" : version_newer(b, a) ? "second" : "neither";
}

/// Cases of cases/answers.txt: "QUESTION ARGUMENT|ARGUMENT => ANSWER".
TEST(Answers, AreThoseOfTheList) {
    const std::map<std::string, Answer> questions = {
        {"classify", kind_of},
        {"format", format_words},
        {"sections", section_types},
        {"newer", newer_of},
        {"site_title",
         [](const std::string& text, const std::string&) {
             const TempDir dir;
             return read_title(file_of(dir, text), ConfigKind::Site);
         }},
        {"project_name",
         [](const std::string& text, const std::string&) {
             const TempDir dir;
             return read_title(file_of(dir, text), ConfigKind::Project);
         }},
        {"manifest",
         [](const std::string& folder, const std::string& source) {
             return manifest_path(folder, source).string();
         }},
        {"slug",
         [](const std::string& text, const std::string&) {
             return std::string(is_valid_slug(text) ? "yes" : "no");
         }},
        {"slugify", [](const std::string& text, const std::string&) { return slugify(text); }},
    };
    std::ifstream in(SOURCE_ROOT "/tests/site/cases/answers.txt");
    int asked = 0;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line.starts_with("#"))
            continue;
        SCOPED_TRACE(line);
        const std::size_t arrow = line.find(" =>");
        const std::size_t blank = std::min(line.find(' '), arrow);
        const std::string arguments = line.substr(blank, arrow - blank);
        const std::size_t bar = std::min(arguments.find('|'), arguments.size());
        const std::string answer = line.size() > arrow + 3 ? line.substr(arrow + 4) : "";
        EXPECT_EQ(questions.at(line.substr(0, blank))(
                      bar > 0 ? arguments.substr(1, bar - 1) : "",
                      bar < arguments.size() ? arguments.substr(bar + 1) : ""),
                  answer);
        ++asked;
    }
    EXPECT_GT(asked, 80);
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

} // namespace
} // namespace Lumenfold
