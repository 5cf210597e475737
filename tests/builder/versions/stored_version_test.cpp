#include "builder/versions/building_folder.h"
#include "builder/versions/stored_version.h"
#include "site/versions.h"
#include "support/file_size_limit.h"
#include "support/read_only.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

namespace Lumenfold::Builder {

namespace {

namespace fs = std::filesystem;
using TestSupport::file_tree;
using TestSupport::FileSizeLimit;
using TestSupport::read_file;
using TestSupport::ReadOnly;
using TestSupport::TempDir;
using TestSupport::write_file;

StoredVersion sample(const std::string& tag) {
    StoredVersion version{"3.2", tag, "9f2c41d0", "2026-02-14", {}, {}};
    VersionPage readme;
    readme.path = "index.html";
    readme.title = "Gauge \"λ\"";
    readme.html = "<p>\x01topics/units.html\r\n</p>";
    readme.headings = {{2, "tides", "Tides"}, {3, "", ""}};
    readme.anchors = {"tides", "a-b"};
    readme.sections = {{"", "Before any heading"}, {"tides", "Tides rise"}};
    readme.site_links = {{"/harmonics/#tides", "sources/gauge/README.md", 12}};
    VersionPage topic;
    topic.path = "topics/units.html";
    topic.label = "Units";
    topic.intro = "What is measured";
    topic.source = "guides/units.md";
    topic.html = "<p>" + tag + "</p>";
    version.pages = {readme, topic};
    version.files = {{"files/images/a.png", std::string("\0PNG\xFF", 5)}, {"files/b c.svg", ""}};
    return version;
}

class StoredVersions : public testing::Test {
protected:
    void store(const std::string& tag) {
        std::string problem;
        ASSERT_TRUE(write_version(place, sample(tag), problem)) << problem;
    }
    std::string tag_in_place() const {
        const auto version = read_version(place, Bodies::With);
        return version ? version->tag : "none";
    }

    TempDir project;
    fs::path place = project / "versions/3.2";
    fs::path building = project / ".lumenfold-building/3.2";
};

TEST_F(StoredVersions, ComeBackAsTheyWere) {
    store("3.2.1");
    const StoredVersion original = sample("3.2.1");
    const auto whole = read_version(place, Bodies::With);
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->label + whole->tag + whole->commit + whole->date,
              "3.23.2.19f2c41d02026-02-14");
    EXPECT_EQ(whole->pages, original.pages);
    EXPECT_EQ(whole->files, original.files);

    const auto known = read_version(place, Bodies::Without);
    ASSERT_TRUE(known);
    EXPECT_EQ(known->pages[0].site_links, original.pages[0].site_links);
    EXPECT_EQ(known->pages[0].html + known->files[0].bytes, "");
    EXPECT_EQ(known->pages[0].sections, original.pages[0].sections) << "search needs them";
    EXPECT_FALSE(fs::exists(project / ".lumenfold-building"));
}

TEST_F(StoredVersions, AreReadByTheApplicationToo) {
    ::setenv("SOURCE_DATE_EPOCH", "1771146764", 1);
    store("3.2.1");
    ::unsetenv("SOURCE_DATE_EPOCH");
    BuiltRecord record;
    std::string error;
    ASSERT_TRUE(read_built_record(place, record, &error)) << error;
    EXPECT_EQ(record.tag + " " + record.commit + " " + record.built,
              "3.2.1 9f2c41d0 2026-02-15T09:12:44Z");
}

TEST_F(StoredVersions, HoldAnyTextOnItsLine) {
    StoredVersion odd = sample("3.2.1");
    odd.pages[0].title = "\xFF and \"quotes\"";
    odd.pages[0].sections = {{"a\tb", "two\nlines\tand a tab"}};
    odd.pages[1].sections = {{"", ""}};
    std::string problem;
    ASSERT_TRUE(write_version(place, odd, problem)) << problem;
    const auto read = read_version(place, Bodies::With);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->pages[0].title, "\xEF\xBF\xBD and \"quotes\"");
    EXPECT_EQ(read->pages[0].sections, (std::vector<TextSection>{{"a b", "two lines and a tab"}}));
    EXPECT_EQ(read->pages[1].sections.size(), 1U);
}

TEST_F(StoredVersions, OfTheSameContentHaveTheSameSign) {
    store("3.2.1");
    const std::string sign = version_sign(place);
    EXPECT_EQ(sign.size(), 32U);
    store("3.2.1");
    EXPECT_EQ(version_sign(place), sign);
    store("3.2.2");
    EXPECT_NE(version_sign(place), sign);
    EXPECT_EQ(version_sign(project.path()), "");
}

TEST_F(StoredVersions, CountAsNotBuiltWhenDamaged) {
    store("3.2.1");
    for (const auto& [name, bytes] : file_tree(place)) {
        if (name.ends_with("/"))
            continue;
        SCOPED_TRACE(name);
        fs::remove(place / name);
        EXPECT_EQ(tag_in_place(), "none");
        write_file(place / name, bytes + "x");
        EXPECT_EQ(tag_in_place(), name.starts_with("files/") ? "3.2.1" : "none");
        write_file(place / name, bytes);
        EXPECT_EQ(tag_in_place(), "3.2.1");
    }
    const std::string contents = read_file(place / "contents.json");
    for (const auto& [good, bad] : {std::pair("\"format\":1", "\"format\":2"),
                                    std::pair("\"files/b c.svg\"", "\"files/../../a\""),
                                    std::pair("\"path\":\"index.html\"", "\"path\":7"),
                                    std::pair("\"bytes\":", "\"bytes\":9")}) {
        std::string changed = contents;
        changed.replace(changed.find(good), std::string(good).size(), bad);
        write_file(place / "contents.json", changed);
        EXPECT_EQ(tag_in_place(), "none") << bad;
    }
    write_file(place / "contents.json", contents);
    write_file(place / ".lumenfold-built", R"({"format": 2, "tag": "3.2.1", "content": "x"})");
    EXPECT_EQ(tag_in_place() + version_sign(place), "none");
}

/// What a kill can leave, and what the next look must make of it.
TEST_F(StoredVersions, AreRepairedAfterAKill) {
    struct Case {
        const char* in_place;
        const char* old;
        const char* made;
        bool made_whole;
        const char* expected;
    };
    for (const Case& c : {Case{"1", "", "2", false, "1"}, Case{"1", "", "2", true, "1"},
                          Case{"", "1", "2", true, "2"}, Case{"2", "1", "", true, "2"},
                          Case{"", "1", "", true, "1"}, Case{"", "", "2", false, "none"}}) {
        SCOPED_TRACE(std::string(c.in_place) + "|" + c.old + "|" + c.made);
        const auto put = [&](const std::string& tag, const fs::path& folder) {
            if (tag.empty())
                return;
            store(tag);
            fs::create_directories(folder.parent_path());
            if (folder != place)
                fs::rename(place, folder);
        };
        put(c.old, project / "aside-old");
        put(c.made, project / "aside-new");
        put(c.in_place, place);
        fs::create_directories(building);
        if (*c.old)
            fs::rename(project / "aside-old", building / "old");
        if (*c.made)
            fs::rename(project / "aside-new", building / "new");
        if (!c.made_whole)
            fs::remove(building / "new/.lumenfold-built");
        repair_versions(project.path());
        EXPECT_EQ(tag_in_place(), c.expected);
        EXPECT_FALSE(fs::exists(project / ".lumenfold-building"));
        fs::remove_all(project / "versions");
    }
}

TEST_F(StoredVersions, AreMadeByOneBuildAtATime) {
    store("3.2.1");
    std::string problem;
    const auto first = BuildingFolder::open(place, problem);
    ASSERT_TRUE(first);
    EXPECT_FALSE(write_version(place, sample("3.2.2"), problem));
    EXPECT_EQ(problem, "Another build is making 3.2 at this moment; wait until it is done.");
    repair_versions(project.path());
    EXPECT_TRUE(write_version(project / "versions/3.3", sample("3.3.0"), problem)) << problem;
    EXPECT_TRUE(fs::exists(building));
    EXPECT_EQ(tag_in_place(), "3.2.1");
}

TEST_F(StoredVersions, StayAsTheyWereWhereNothingCanBeWritten) {
    store("3.2.1");
    const auto before = file_tree(project.path());
    std::string problem;
    {
        const ReadOnly read_only(project.path());
        EXPECT_FALSE(write_version(place, sample("3.2.2"), problem));
    }
    EXPECT_EQ(problem, place.string() + " cannot be written: Permission denied. What was there "
                                        "before is kept; mend this and build again.");
    EXPECT_EQ(file_tree(project.path()), before);

    StoredVersion large = sample("3.2.2");
    large.pages[1].html.assign(100'000, 'x');
    bool written = true;
    {
        const FileSizeLimit full_disk(50'000);
        written = write_version(place, large, problem);
    }
    EXPECT_FALSE(written);
    EXPECT_NE(problem.find("File too large"), std::string::npos) << problem;
    EXPECT_EQ(file_tree(project.path()), before);
}

TEST_F(StoredVersions, ReplaceNothingThatIsNoVersion) {
    write_file(place, "mine");
    std::string problem;
    EXPECT_FALSE(write_version(place, sample("3.2.1"), problem));
    EXPECT_EQ(problem, place.string() + " is no folder; move it away and build again.");
    EXPECT_EQ(read_file(place), "mine");
    StoredVersion foul = sample("3.2.1");
    foul.files[0].path = "files/../../../x";
    EXPECT_FALSE(write_version(project / "versions/3.3", foul, problem));
    EXPECT_EQ(file_tree(project.path()).size(), 2U);
}

} // namespace
} // namespace Lumenfold::Builder
