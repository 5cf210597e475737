#include "site/site_support.h"
#include "site/versions.h"

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::expect_change;
using TestSupport::on_private_disk;
using TestSupport::parser_words;
using TestSupport::PrivateDisk;
using TestSupport::read_file;
using TestSupport::TempDir;
using TestSupport::write_file;

TEST(ReadBuiltRecord, SaysWhyNot) {
    const TempDir dir;
    const std::string file = (dir / ".lumenfold-built").string();
    struct Case {
        const char* text; ///< of the record; null for none
        std::string words;
    };
    const Case cases[] = {
        {nullptr, "No .lumenfold-built in " + dir.path().string()},
        {"{\"tag\"", "Invalid JSON in " + file + ": " + parser_words("{\"tag\"")},
        {"[1e999]", "Invalid JSON in " + file + ": " + parser_words("[1e999]")},
        {R"({"format": 2, "tag": "1.0.0"})",
         "declares format 2; this Lumenfold reads up to format 1 (update Lumenfold to open it)"},
        {R"({"format": 1.5, "tag": "1.0.0"})",
         "'format' must be an integer (this Lumenfold reads up to format 1)"},
        {R"({"commit": "c"})", file + " records no tag"},
        {R"({"tag": null})", file + " records no tag"},
        {R"(["tag"])", file + " records no tag"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.words);
        if (c.text)
            write_file(file, c.text);
        BuiltRecord record;
        std::string error;
        EXPECT_FALSE(read_built_record(dir.path(), record, &error));
        EXPECT_EQ(error, c.words);
        EXPECT_FALSE(read_built_record(dir.path(), record, nullptr));
    }
    write_file(file, R"({"tag": "1.2.3", "commit": 5, "built": "2026-01-02"})");
    BuiltRecord record;
    std::string error;
    ASSERT_TRUE(read_built_record(dir.path(), record, &error)) << error;
    EXPECT_EQ(record.tag + "|" + record.commit + "|" + record.built, "1.2.3||2026-01-02");
}

std::string listed(const fs::path& project) {
    std::string text;
    for (const VersionEntry& entry : discover_versions(project))
        text += entry.name + "=" + entry.tag + " ";
    return text;
}

TEST(DiscoverVersions, ListsEveryFolder) {
    const TempDir dir;
    EXPECT_EQ(listed(dir.path()), "") << "no folder";
    const fs::path versions = dir / "versions";
    write_file(versions / "1.9" / ".lumenfold-built", R"({"tag": "1.9.4"})");
    write_file(versions / "1.10" / ".lumenfold-built", R"({"tag": "1.10.0", "format": 1})");
    write_file(versions / "2.0" / ".lumenfold-built", R"({"tag": "2.0.0", "format": 2})");
    write_file(versions / "\xc3\xa4" / ".lumenfold-built", "{");
    fs::create_directories(versions / "empty" / ".lumenfold-built");
    write_file(versions / "a file", "");
    fs::create_directory_symlink(versions / "1.9", versions / "latest");
    fs::create_symlink(versions / "nowhere", versions / "dangling");
    EXPECT_EQ(listed(dir.path()), "1.10=1.10.0 1.9=1.9.4 2.0= empty= latest=1.9.4 ä= ");

    write_file(dir / "other" / "versions", "a file");
    EXPECT_EQ(listed(dir / "other"), "");
}

TEST(NewestVersion, GoesByNumbersElseTakesTheLast) {
    const auto newest = [](std::vector<std::string> names) {
        std::vector<VersionEntry> entries;
        for (std::string& name : names)
            entries.push_back({std::move(name), ""});
        return newest_version(entries);
    };
    EXPECT_EQ(newest({}), "");
    EXPECT_EQ(newest({"1.10", "1.9"}), "1.10");
    EXPECT_EQ(newest({"1.10", "1.9", "2.0", "nightly"}), "2.0");
    EXPECT_EQ(newest({"0.1", "alpha", "beta"}), "0.1");
    EXPECT_EQ(newest({"alpha", "beta"}), "beta");
}

TEST(ManifestPath, JoinsFolderAndSource) {
    const char* cases[][3] = {
        {"/s/p", "", "/s/p/.lumenfold"},
        {"/s/p/", "", "/s/p/.lumenfold"},
        {"/s/p//\\/", "src", "/s/p/src/.lumenfold"},
        {"/s/p", "../src/", "/s/p/../src/.lumenfold"},
        {"/s/p", "/src", "/src/.lumenfold"},
        {"/", "", "/.lumenfold"},
        {"//", "src", "/src/.lumenfold"},
        {"p/", "", "p/.lumenfold"},
        {"", "src", "src/.lumenfold"},
        {"", "", ".lumenfold"},
        {"/s/é", "ü", "/s/é/ü/.lumenfold"},
    };
    for (const auto& [folder, source, path] : cases)
        EXPECT_EQ(manifest_path(folder, source).string(), path) << folder << " with " << source;
}

TEST(LoadManifest, SaysWhyNot) {
    const TempDir dir;
    const fs::path file = dir / ".lumenfold";
    Json json = "before";
    std::string error;
    EXPECT_FALSE(load_manifest(file, json, &error));
    EXPECT_EQ(error, "No .lumenfold manifest at " + file.string() +
                         " — the project's source root declares its own build block "
                         "(readme/topics/includes) there");
    write_file(file, "{\"a\"}");
    EXPECT_FALSE(load_manifest(file, json, &error));
    EXPECT_EQ(error, "Invalid JSON in " + file.string() + ": " + parser_words("{\"a\"}"));
    write_file(file, "{\"format\": 0}");
    EXPECT_FALSE(load_manifest(file, json, &error));
    EXPECT_EQ(error, "declares format 0; this Lumenfold reads up to format 1");
    EXPECT_EQ(json, "before");
    write_file(file, R"({"build": {"readme": "README.md"}})");
    EXPECT_TRUE(load_manifest(file, json, nullptr));
    EXPECT_EQ(json["build"]["readme"], "README.md");
}

TEST(VersionNewer, OrdersMajorMinorLabelsOnly) {
    struct Case {
        const char* a;
        const char* b;
        bool newer;
        bool older;
    };
    // clang-format off
    const Case cases[] = {
        {"1.10", "1.9", true, false}, {"2.0", "1.99", true, false}, {"1.2", "1.2", false, false},
        {"1.2", "01.02", false, false}, {"1.2.3", "1.2.9", false, false},
        {"nightly", "x", false, false}, {"1.2", "nightly", true, false},
        {"1.2", "1.2.3", true, false}, {"0.0", "9", true, false}, {"0.1", "", true, false},
        {"0.1", "1.", true, false}, {"0.1", ".1", true, false}, {"0.1", "1.2 ", true, false},
        {"0.1", "v1.2", true, false}, {"0.1", "-1.2", true, false}, {"0.1", "+1.2", true, false},
        {"999999999.0", "999999998.999999999", true, false},
        {"0.1", "1000000000.1", true, false}, // ten digits
    };
    // clang-format on
    for (const Case& c : cases) {
        EXPECT_EQ(version_newer(c.a, c.b), c.newer) << c.a << " newer than " << c.b;
        EXPECT_EQ(version_newer(c.b, c.a), c.older) << c.b << " newer than " << c.a;
    }
}

TEST(VersionStatusText, TurnsWordsIntoLabels) {
    const char* cases[][2] = {{"new", "New"},         {"excluded", "Excluded"},
                              {"pending", "Pending"}, {"complete", "Complete"},
                              {"no-tag", "No Tag"},   {"", ""},
                              {"New", "New"},         {"half done", "half done"}};
    for (const auto& [status, text] : cases)
        EXPECT_EQ(version_status_text(status), text);
}

TEST(IncludeVersion, DeclaresNewestFirst) {
    struct Case {
        const char* before;
        const char* label;
        const char* after;
    };
    const Case cases[] = {
        {R"({"slug":"s"})", "1.0",
         R"({"format":1,"slug":"s","versions":[{"label":"1.0","release_date":"D"}]})"},
        {R"({"format":1,"versions":[{"label":"1.10"},{"label":"1.8"},{"label":"x"}]})", "1.9",
         R"({"format":1,"versions":[{"label":"1.10"},{"label":"1.9","release_date":"D"},
             {"label":"1.8"},{"label":"x"}]})"},
        {R"({"format":1,"versions":[{"label":"x"},5,{},{"label":"1.8"}]})", "1.9",
         R"({"format":1,"versions":[{"label":"1.9","release_date":"D"},{"label":"x"},5,{},
             {"label":"1.8"}]})"},
        {R"({"format":1,"versions":["1.0",5,{"label":"1.8"}]})", "1.9",
         R"({"format":1,"versions":["1.0",5,{"label":"1.9","release_date":"D"},
             {"label":"1.8"}]})"},
        {R"({"format":1,"versions":["1.0",{"label":"2.0"}]})", "y",
         R"({"format":1,"versions":["1.0",{"label":"2.0"},{"label":"y","release_date":"D"}]})"},
        {R"({"format":1,"versions":"lost","versions_excluded":["1.0","2.0",5,"1.0"]})", "1.0",
         R"({"format":1,"versions":[{"label":"1.0","release_date":"D"}],
             "versions_excluded":["2.0",5]})"},
        {R"({"versions":[{"label":"1.0","release_date":"old"}],"versions_excluded":["1.0"]})",
         "1.0",
         R"({"format":1,"versions":[{"label":"1.0","release_date":"old"}],
             "versions_excluded":[]})"},
        {R"({"format":1,"versions_excluded":"1.0"})", "1.0",
         R"({"format":1,"versions_excluded":"1.0",
             "versions":[{"label":"1.0","release_date":"D"}]})"},
        {R"({"format":1,"facts":[5,{"label":"License","value":""},{"label":"license","value":"a"},
             {"label":"License","value":"MIT"},{"label":"License","value":"b"}]})",
         "1.0",
         R"({"format":1,"facts":[5,{"label":"License","value":""},{"label":"license","value":"a"},
             {"label":"License","value":"MIT"},{"label":"License","value":"b"}],
             "versions":[{"label":"1.0","release_date":"D","license_display":"MIT"}]})"},
        {R"({"format":1,"facts":{"label":"License","value":"MIT"}})", "1.0",
         R"({"format":1,"facts":{"label":"License","value":"MIT"},
             "versions":[{"label":"1.0","release_date":"D"}]})"},
    };
    for (const Case& c : cases)
        expect_change(c.before, c.after,
                      [&](const fs::path& file) { return include_version(file, c.label, "D"); });
}

TEST(ExcludeVersion, TakesTheDeclarationAway) {
    const char* cases[][2] = {
        {R"({"slug":"s"})", R"({"format":1,"slug":"s","versions_excluded":["1.0"]})"},
        {R"({"format":1,"versions":[{"label":"1.0"},{"label":"1.1"},"1.0",{"label":"1.0"}],
             "versions_excluded":["0.9"]})",
         R"({"format":1,"versions":[{"label":"1.1"},"1.0"],"versions_excluded":["0.9","1.0"]})"},
        {R"({"format":1,"versions":{"label":"1.0"},"versions_excluded":["1.0"]})",
         R"({"format":1,"versions":{"label":"1.0"},"versions_excluded":["1.0"]})"},
        {R"({"format":1,"versions_excluded":5})", R"({"format":1,"versions_excluded":["1.0"]})"},
    };
    const auto exclude = [](const fs::path& file) { return exclude_version(file, "1.0"); };
    for (const auto& [before, after] : cases) {
        expect_change(before, after, exclude);
        expect_change(after, after, exclude); // twice is once
    }
}

TEST(IncludeAndExclude, RefuseQuietly) {
    const auto include = [](const char* label) {
        return [=](const fs::path& file) { return include_version(file, label, "D"); };
    };
    const auto exclude = [](const char* label) {
        return [=](const fs::path& file) { return exclude_version(file, label); };
    };
    for (const char* text : {"[]", "{", "null", ""}) {
        expect_change(text, nullptr, include("1.0"));
        expect_change(text, nullptr, exclude("1.0"));
    }
    expect_change("{}", nullptr, include(""));
    expect_change("{}", nullptr, exclude(""));
    EXPECT_FALSE(include_version("/no/such/file", "1.0", ""));

    const bool permitted = on_private_disk("size=64k", [](const PrivateDisk& disk) {
        const fs::path file = disk.path() / "p";
        write_file(file, "{}");
        disk.make_read_only();
        EXPECT_FALSE(include_version(file, "1.0", ""));
        EXPECT_FALSE(exclude_version(file, "1.0"));
    });
    if (!permitted)
        GTEST_SKIP() << "mounting is not permitted here";
}

} // namespace
} // namespace Lumenfold
