#include "site/creation.h"
#include "site/site_support.h"

#include <system_error>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::file_tree;
using TestSupport::FileSizeLimit;
using TestSupport::normal_form;
using TestSupport::ReadOnly;
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
struct Promotion : testing::Test {
    TempDir dir;
    fs::path file = dir / "site/.lumenfold-site";
    fs::path project = dir / "site/projects/gauge/.lumenfold-project";
    fs::path family;
    fs::path member;
    std::string error;

    Promotion() {
        write_file(file, REGISTRY);
        write_file(dir / "site/projects/a/.lumenfold-project", R"({"slug": "a"})");
        write_file(dir / "site/projects/z/.lumenfold-project",
                   R"({"slug": "z", "parent_slug": "y"})");
        write_file(project, PROJECT);
        write_file(dir / "site/projects/gauge/versions/1.0/.lumenfold-built",
                   R"({"tag": "1.0.0"})");
        write_file(dir / "site/projects/gauge/notes.md", "# notes");
    }
    bool promote(const std::string& slug = "core", const std::string& label = "Core") {
        return promote_to_family(file, project, slug, label, &family, &member, &error);
    }
    Tree tree() const { return file_tree(dir / "site"); }
};

TEST_F(Promotion, MovesTheContentIntoAMember) {
    Tree expected;
    const std::string moved = "projects/gauge/";
    for (const auto& [name, content] : tree())
        expected[name.starts_with(moved) ? "projects/gauge-core/" + name.substr(moved.size())
                                         : name] = content;
    expected["projects/gauge/"] = "";
    expected["projects/gauge/.lumenfold-project"] = normal_form(
        R"({"format":1,"slug":"gauge","name":"Gauge","tagline":"T","logo":"/images/g.svg"})");
    expected["projects/gauge-core/.lumenfold-project"] =
        normal_form(R"({"format":1,"slug":"core","parent_slug":"gauge","name":"Gauge",
                        "logo":"/images/g.svg","x":[1e2],"tagline":"T",
                        "build":{"source_path":"../../src"},"family_label":"Core"})");
    expected[".lumenfold-site"] = normal_form(R"({"title":"S","projects":[
        {"config":"projects/a/.lumenfold-project"},
        {"config":"projects/./gauge/.lumenfold-project"},
        {"config":"./projects/gauge-core/.lumenfold-project","pinned":true},5,
        {"config":"./projects/z/.lumenfold-project"}]})");
    fs::create_directory_symlink(dir / "site", dir / "link"); // any spelling of the path will do
    project = dir / "link/projects/a/../gauge/.lumenfold-project";
    ASSERT_TRUE(promote()) << error;
    EXPECT_EQ(tree(), expected);
    EXPECT_EQ(family, project);
    EXPECT_EQ(fs::canonical(member), dir / "site/projects/gauge-core/.lumenfold-project");
}

TEST_F(Promotion, ReachesProjectsOutsideTheSite) {
    write_file(file, R"({"projects": [{"config": "../out/p/any name.json"}]})");
    project = dir / "out/p/any name.json"; // both references must lead to files of this name
    write_file(project, R"({"slug": "p"})");
    ASSERT_TRUE(promote("m", "")) << error;
    EXPECT_EQ(tree()[".lumenfold-site"],
              normal_form(R"({"projects":[{"config":"../out/p/any name.json"},
                              {"config":"./../out/p-m/any name.json"}]})"));
    const Tree expected = {
        {"p/", ""},
        {"p/any name.json", normal_form(R"({"format":1,"slug":"p","name":""})")},
        {"p-m/", ""},
        {"p-m/any name.json", normal_form(R"({"format":1,"slug":"m","parent_slug":"p"})")}};
    EXPECT_EQ(file_tree(dir / "out"), expected);
}

TEST_F(Promotion, LeavesAProjectThatCannotMove) {
    fs::create_symlink("nowhere", dir / "site/projects/gauge-dangling");
    const Tree before = tree();
    const std::string folder = (dir / "site/projects/gauge").string();
    EXPECT_FALSE(promote("dangling"));
    EXPECT_EQ(error, folder + "-dangling already exists.");
    EXPECT_FALSE(promote(std::string(300, 'n'))); // longer than a name may be
    EXPECT_EQ(error, "Could not move " + folder + ": " +
                         std::make_error_code(std::errc::filename_too_long).message());
    {
        const ReadOnly read_only(dir.path());
        EXPECT_FALSE(promote());
    }
    EXPECT_EQ(error, "Could not move " + folder + ": " +
                         std::make_error_code(std::errc::permission_denied).message());
    EXPECT_EQ(family, "");
    EXPECT_EQ(tree(), before);
}

TEST_F(Promotion, NeverMovesTheSiteOrAnotherProject) {
    for (const bool nested : {false, true}) {
        project = dir / (nested ? "site/sub/.lumenfold-project" : "site/.lumenfold-project");
        write_file(file, nested ? R"({"projects": [{"config": "sub/.lumenfold-project"},
                                                   {"config": "sub/deep/.lumenfold-project"}]})"
                                : R"({"projects": [{"config": ".lumenfold-project"}]})");
        write_file(project, R"({"slug": "s"})");
        const Tree before = tree();
        EXPECT_FALSE(promote("m"));
        EXPECT_EQ(error, "Could not move " + project.parent_path().string() + ": " +
                             std::make_error_code(std::errc::invalid_argument).message());
        EXPECT_EQ(tree(), before);
    }
}

/// A failing write behind the rename, by the size at which writes stop.
TEST_F(Promotion, UndoesEverythingWhenAWriteFails) {
    struct Case {
        rlim_t limit;
        const char* unwritten;
        bool project_rewritten; ///< the restored configuration is in the normal form
        bool site_cut;
    };
    const Case cases[] = {
        {20, "site/projects/gauge/.lumenfold-project", false, false},
        {150, "site/projects/gauge-core/.lumenfold-project", true, false},
        {600, "site/.lumenfold-site", true, true},
    };
    Json registry = Json::parse(REGISTRY);
    registry["long"] = std::string(1000, 'x');
    for (const Case& c : cases) {
        SCOPED_TRACE(c.unwritten);
        write_file(file, registry.dump());
        write_file(project, PROJECT);
        Tree expected = tree();
        bool done = true;
        {
            const FileSizeLimit limit(c.limit);
            done = promote();
        }
        EXPECT_FALSE(done);
        EXPECT_EQ(error, "Could not write " + (dir / c.unwritten).string());
        std::string& config = expected["projects/gauge/.lumenfold-project"];
        if (c.project_rewritten) // the limit still stands while it is put back
            config = normal_form(config).substr(0, c.limit);
        Tree after = tree();
        if (c.site_cut) {
            EXPECT_EQ(after[".lumenfold-site"].size(), c.limit);
            after[".lumenfold-site"] = expected[".lumenfold-site"];
        }
        EXPECT_EQ(after, expected);
    }
}

TEST_F(Promotion, UndoesTheMoveWhenAFileDoesNotOpen) {
    // The project's configuration is a link that only works from the old folder.
    write_file(dir / "site/projects/gauge/real/config", PROJECT);
    fs::remove(project);
    fs::create_symlink("../gauge/real/config", project);
    const Tree before = tree();
    EXPECT_FALSE(promote());
    EXPECT_EQ(error,
              "Could not write " + (dir / "site/projects/gauge-core/.lumenfold-project").string());
    Tree after = tree();
    for (const char* name : {"projects/gauge/.lumenfold-project", "projects/gauge/real/config"}) {
        EXPECT_EQ(after[name], normal_form(before.at(name)));
        after[name] = before.at(name);
    }
    EXPECT_EQ(after, before);
    EXPECT_TRUE(fs::is_symlink(project));
}

} // namespace
} // namespace Lumenfold
