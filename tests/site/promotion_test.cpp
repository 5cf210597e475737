#include "site/creation.h"
#include "site/site_support.h"

#include <system_error>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::file_tree;
using TestSupport::FileSizeLimit;
using TestSupport::normal_form;
using TestSupport::on_private_disk;
using TestSupport::PrivateDisk;
using TestSupport::TempDir;
using TestSupport::write_file;
using Tree = std::map<std::string, std::string>;

constexpr const char* PROJECT = R"({"name": "Gauge", "logo": "/images/g.svg", "x": [1e2],
    "family_label": "lost", "slug": "gauge", "parent_slug": "", "tagline": "T",
    "build": {"source_path": "../../src"}})";
constexpr const char* REGISTRY = R"({"title": "S", "projects": [
    {"config": "projects/a/.lumenfold-project"},
    {"config": "projects/./gauge/.lumenfold-project", "pinned": true}, 5,
    {"config": "./projects/z/.lumenfold-project"}]})";

/// A site of three projects, "gauge" among them with files of its own.
struct Site {
    explicit Site(fs::path folder)
        : root(std::move(folder)) {
        write_file(file, REGISTRY);
        write_file(root / "projects/a/.lumenfold-project", R"({"slug": "a"})");
        write_file(root / "projects/z/.lumenfold-project", R"({"slug": "z", "parent_slug": "y"})");
        write_file(project, PROJECT);
        write_file(root / "projects/gauge/versions/1.0/.lumenfold-built", R"({"tag": "1.0.0"})");
        write_file(root / "projects/gauge/notes.md", "# notes");
    }

    bool promote(const std::string& slug = "core", const std::string& label = "Core") {
        return promote_to_family(file, project, slug, label, &family, &member, &error);
    }

    fs::path root;
    fs::path file = root / ".lumenfold-site";
    fs::path project = root / "projects/gauge/.lumenfold-project";
    fs::path family;
    fs::path member;
    std::string error;
};

Tree promoted(Tree tree, const std::string& label) {
    Tree result;
    for (const auto& [name, content] : tree) {
        const std::string moved = "projects/gauge/";
        result[name.starts_with(moved) ? "projects/gauge-core/" + name.substr(moved.size())
                                       : name] = content;
    }
    result["projects/gauge/"] = "";
    result["projects/gauge/.lumenfold-project"] = normal_form(
        R"({"format":1,"slug":"gauge","name":"Gauge","tagline":"T","logo":"/images/g.svg"})");
    result["projects/gauge-core/.lumenfold-project"] =
        normal_form(R"({"format":1,"slug":"core","parent_slug":"gauge","name":"Gauge",
                        "logo":"/images/g.svg","x":[1e2],"tagline":"T",
                        "build":{"source_path":"../../src"})" +
                    label + "}");
    result[".lumenfold-site"] = normal_form(R"({"title":"S","projects":[
        {"config":"projects/a/.lumenfold-project"},
        {"config":"projects/./gauge/.lumenfold-project"},
        {"config":"./projects/gauge-core/.lumenfold-project","pinned":true},5,
        {"config":"./projects/z/.lumenfold-project"}]})");
    return result;
}

TEST(PromoteToFamily, MovesTheContentIntoAMember) {
    for (const char* label : {"Core", ""}) {
        const TempDir dir;
        Site site(dir.path());
        const Tree before = file_tree(dir.path());
        ASSERT_TRUE(site.promote("core", label)) << site.error;
        EXPECT_EQ(file_tree(dir.path()),
                  promoted(before, *label ? R"(,"family_label":"Core")" : ""));
        EXPECT_EQ(site.family, site.project);
        EXPECT_EQ(site.member, dir / "projects" / "gauge-core" / ".lumenfold-project");
    }
}

TEST(PromoteToFamily, TakesAnyFormOfThePaths) {
    const TempDir dir;
    Site site(dir.path() / "real");
    fs::create_directory_symlink(dir / "real", dir / "link");
    site.project = dir / "link/projects/a/../gauge/.lumenfold-project";
    const Tree before = file_tree(dir / "real");
    ASSERT_TRUE(site.promote()) << site.error;
    EXPECT_EQ(file_tree(dir / "real"), promoted(before, R"(,"family_label":"Core")"));
}

TEST(PromoteToFamily, ReachesProjectsOutsideTheSite) {
    const TempDir dir;
    write_file(dir / "site/.lumenfold-site",
               R"({"projects": [{"config": "../out/p/.lumenfold-project"}]})");
    write_file(dir / "out/p/.lumenfold-project", R"({"slug": "p"})");
    std::string error;
    ASSERT_TRUE(promote_to_family(dir / "site/.lumenfold-site", dir / "out/p/.lumenfold-project",
                                  "m", "", nullptr, nullptr, &error))
        << error;
    EXPECT_EQ(file_tree(dir.path())["site/.lumenfold-site"],
              normal_form(R"({"projects":[{"config":"../out/p/.lumenfold-project"},
                              {"config":"./../out/p-m/.lumenfold-project"}]})"));
    EXPECT_EQ(file_tree(dir.path())["out/p/.lumenfold-project"],
              normal_form(R"({"format":1,"slug":"p","name":""})"));
}

TEST(PromoteToFamily, ChecksBeforeItMoves) {
    const TempDir dir;
    Site site(dir.path());
    const std::string slug_words =
        "Slug must be lowercase letters and digits in dash-separated runs (like \"core\").";
    const std::string unread_site = "Cannot read site config: " + site.file.string();
    const std::string unread_project = "Cannot read project config: " + site.project.string();
    const std::string no_array = "'projects' is not an array in the site config.";
    const std::string no_slug = "The project's config has no slug.";
    const std::string unregistered = "This project isn't registered in the site's config.";
    fs::create_directories(dir / "projects/gauge-taken");
    fs::create_symlink("nowhere", dir / "projects/gauge-dangling");
    write_file(dir / "odd", R"({"slug": []})");
    const std::string entry = R"({"config": "projects/gauge/.lumenfold-project"})";
    const std::string long_slug(300, 'n');
    struct Case {
        const char* slug;
        std::string words;
        std::string registry; ///< in place of the site's, unless empty
        std::string project;  ///< in place of the project's, unless empty
    };
    const Case cases[] = {
        {"", slug_words, {}, {}},
        {"Core", slug_words, {}, {}},
        {"core", unread_site, "{", {}},
        {"core", unread_site, "[]", {}},
        {"core", unread_site, "{\"projects\": [" + entry + ", {\"config\": \"odd\"}]}", {}},
        {"core", no_array, "{}", {}},
        {"core", no_array, R"({"projects": "x"})", {}},
        {"core",
         unregistered,
         R"({"projects": [{"config": "projects/a/.lumenfold-project"}, 5]})",
         {}},
        {"core", unread_project, {}, "{"},
        {"core", unread_project, {}, "[\"slug\"]"},
        {"core", no_slug, {}, "{}"},
        {"core", no_slug, {}, R"({"slug": ""})"},
        {"core", no_slug, {}, R"({"slug": 5})"},
        {"core",
         "This project is already a family member.",
         {},
         R"({"slug": "gauge", "parent_slug": "x"})"},
        {"gauge", "Choose a different slug — 'gauge' stays with the family.", {}, {}},
        {"core", "'y' is already a project family.", {}, R"({"slug": "y"})"},
        {"taken", (dir / "projects/gauge-taken").string() + " already exists.", {}, {}},
        {"dangling", (dir / "projects/gauge-dangling").string() + " already exists.", {}, {}},
        // No file system of ours takes a name of 300 bytes.
        {long_slug.c_str(),
         "Could not move " + (dir / "projects/gauge").string() + ": " +
             std::make_error_code(std::errc::filename_too_long).message(),
         {},
         {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.words);
        write_file(site.file, c.registry.empty() ? REGISTRY : c.registry);
        write_file(site.project, c.project.empty() ? PROJECT : c.project);
        const Tree before = file_tree(dir.path());
        EXPECT_FALSE(site.promote(c.slug));
        EXPECT_EQ(site.error, c.words);
        EXPECT_EQ(site.family, "");
        EXPECT_EQ(site.member, "");
        EXPECT_EQ(file_tree(dir.path()), before);
    }
}

TEST(PromoteToFamily, NeverMovesTheSiteItself) {
    const TempDir dir;
    write_file(dir / "s/.lumenfold-site", R"({"projects": [{"config": ".lumenfold-project"}]})");
    write_file(dir / "s/.lumenfold-project", R"({"slug": "s"})");
    const Tree before = file_tree(dir.path());
    std::string error;
    EXPECT_FALSE(promote_to_family(dir / "s/.lumenfold-site", dir / "s/.lumenfold-project", "m", "",
                                   nullptr, nullptr, &error));
    EXPECT_EQ(error, "Could not move " + (dir / "s").string() + ": " +
                         std::make_error_code(std::errc::invalid_argument).message());
    EXPECT_EQ(file_tree(dir.path()), before);
}

/// A failing write behind the rename, by the size at which writes stop.
TEST(PromoteToFamily, UndoesEverythingWhenAWriteFails) {
    struct Case {
        rlim_t limit;
        const char* unwritten;
        bool project_rewritten; ///< the restored configuration is in the normal form
        bool site_cut;
    };
    const Case cases[] = {
        {20, "projects/gauge/.lumenfold-project", false, false},
        {150, "projects/gauge-core/.lumenfold-project", true, false},
        {600, ".lumenfold-site", true, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.unwritten);
        const TempDir dir;
        Site site(dir.path());
        Json registry = Json::parse(REGISTRY);
        registry["long"] = std::string(1000, 'x');
        write_file(site.file, registry.dump());
        Tree tree = file_tree(dir.path());
        bool done = true;
        {
            const FileSizeLimit limit(c.limit);
            done = site.promote();
        }
        EXPECT_FALSE(done);
        EXPECT_EQ(site.error, "Could not write " + (dir.path() / c.unwritten).string());
        std::string& project = tree["projects/gauge/.lumenfold-project"];
        // The limit still stands while the configuration is put back.
        if (c.project_rewritten)
            project = normal_form(project).substr(0, c.limit);
        Tree after = file_tree(dir.path());
        if (c.site_cut) {
            EXPECT_EQ(after[".lumenfold-site"].size(), c.limit);
            after[".lumenfold-site"] = tree[".lumenfold-site"];
        }
        EXPECT_EQ(after, tree);
    }
}

TEST(PromoteToFamily, UndoesTheMoveWhenAFileDoesNotOpen) {
    // The project's configuration is a link that only works from the old folder.
    const TempDir dir;
    Site site(dir.path());
    write_file(dir / "projects/gauge/real/config", PROJECT);
    fs::remove(site.project);
    fs::create_symlink("../gauge/real/config", site.project);
    const Tree before = file_tree(dir.path());
    EXPECT_FALSE(site.promote());
    EXPECT_EQ(site.error,
              "Could not write " + (dir / "projects/gauge-core/.lumenfold-project").string());
    Tree after = file_tree(dir.path());
    for (const char* name : {"projects/gauge/.lumenfold-project", "projects/gauge/real/config"}) {
        EXPECT_EQ(after[name], normal_form(before.at(name)));
        after[name] = before.at(name);
    }
    EXPECT_EQ(after, before);
    EXPECT_TRUE(fs::is_symlink(site.project));
}

TEST(PromoteToFamily, UndoesTheMoveOnAFullDisk) {
    // After the rename there is room for `inodes` more files: none for the folder, one for it but
    // not for the family's file.
    bool permitted = true;
    for (const int inodes : {0, 1}) {
        permitted = on_private_disk("size=256k,nr_inodes=60", [&](const PrivateDisk& disk) {
            SCOPED_TRACE(std::to_string(inodes) + " inodes");
            Site site(disk.path());
            disk.leave_inodes(inodes);
            const Tree before = file_tree(disk.path());
            EXPECT_FALSE(site.promote());
            EXPECT_EQ(site.error, "Could not write " + site.project.string());
            EXPECT_EQ(file_tree(disk.path()), before);
        });
    }
    if (!permitted)
        GTEST_SKIP() << "mounting is not permitted here";
}

TEST(PromoteToFamily, KeepsTheProjectWhereTheDiskIsReadOnly) {
    const bool permitted = on_private_disk("size=256k", [](const PrivateDisk& disk) {
        Site site(disk.path());
        const Tree before = file_tree(disk.path());
        disk.make_read_only();
        EXPECT_FALSE(site.promote());
        EXPECT_EQ(site.error, "Could not move " + (disk.path() / "projects/gauge").string() + ": " +
                                  std::make_error_code(std::errc::read_only_file_system).message());
        EXPECT_EQ(file_tree(disk.path()), before);
    });
    if (!permitted)
        GTEST_SKIP() << "mounting is not permitted here";
}

} // namespace
} // namespace Lumenfold
