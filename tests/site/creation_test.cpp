#include "site/config_files.h"
#include "site/creation.h"
#include "site/site_support.h"

#include <ctime>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::file_tree;
using TestSupport::FileSizeLimit;
using TestSupport::normal_form;
using TestSupport::read_file;
using TestSupport::ReadOnly;
using TestSupport::TempDir;
using TestSupport::write_file;

constexpr const char* REGISTRY = R"({"title": "T", "projects": [
    {"config": "./projects/core/.lumenfold-project"}, {"config": "./projects/core-x/.lumenfold-project"},
    {"config": "./projects/gone/.lumenfold-project"}, {"config": "./projects/core-y/.lumenfold-project"},
    {"config": "./projects/zed/.lumenfold-project"}], "last": 1})";

/// A site of a family of three, a missing project and another one.
fs::path write_site(const fs::path& root) {
    write_file(root / ".lumenfold-site", REGISTRY);
    write_file(root / "projects/core/.lumenfold-project", R"({"slug": "core"})");
    for (const std::string slug : {"x", "y"})
        write_file(root / ("projects/core-" + slug + "/.lumenfold-project"),
                   R"({"slug": ")" + slug + R"(", "parent_slug": "core"})");
    write_file(root / "projects/zed/.lumenfold-project", R"({"slug": "zed"})");
    return root / ".lumenfold-site";
}

TEST(CreateSite, WritesTheDefaultTextAndFolders) {
    const TempDir dir;
    write_file(dir / "new/other", "kept");
    std::string error;
    ASSERT_TRUE(create_site(dir / "new", "Tide \"&\" \n—", &error)) << error;
    const std::time_t now = std::time(nullptr);
    const std::string year = std::to_string(1900 + std::localtime(&now)->tm_year);
    std::string text = R"({
  "format": 1,
  "title": "TITLE",
  "description": "A new site",
  "copyright": "(c) YEAR TITLE",
  "output": "./output",
  "branding": {
    "tab_text": "TITLE"
  },
  "footer_links": [],
  "projects": [],
  "socials": [],
  "home": {
    "sections": [
      { "type": "description" },
      { "type": "projects" },
      { "type": "socials" }
    ]
  },
  "pages": {
    "home_title": "TITLE"
  }
}
)";
    for (std::size_t at = 0; (at = text.find("TITLE")) != std::string::npos;)
        text.replace(at, 5, "Tide \\\"&\\\" \\n—");
    text.replace(text.find("YEAR"), 4, year);
    const std::map<std::string, std::string> tree = {
        {".lumenfold-site", text}, {"content-fragments/", ""}, {"images/", ""}, {"other", "kept"}};
    EXPECT_EQ(file_tree(dir / "new"), tree);
    EXPECT_EQ(read_title(dir / "new/.lumenfold-site", ConfigKind::Site), "Tide \"&\" \n—");
    ASSERT_TRUE(create_site(dir / "deep/er", "", nullptr)) << "with its parents";
    EXPECT_EQ(read_title(dir / "deep/er/.lumenfold-site", ConfigKind::Site), "My Site");
}

TEST(CreateSite, SaysWhatStandsInTheWay) {
    const TempDir dir;
    write_file(dir / "file/.lumenfold-site", "");
    fs::create_directories(dir / "folder/.lumenfold-site");
    fs::create_directories(dir / "dangling");
    fs::create_symlink("nowhere", dir / "dangling/.lumenfold-site");
    write_file(dir / "a file", "");
    write_file(dir / "s/content-fragments", "");
    write_file(dir / "t/images", "");
    fs::create_directories(dir / "t/content-fragments");
    const std::string exists = ".lumenfold-site already exists in ";
    const std::string no_folder = "Could not create site directory: ";
    const std::pair<const char*, std::string> cases[] = {
        {"file", exists + (dir / "file").string()},
        {"folder", exists + (dir / "folder").string()},
        {"dangling", exists + (dir / "dangling").string()},
        {"a file", no_folder + (dir / "a file/content-fragments").string()},
        {"s", no_folder + (dir / "s/content-fragments").string()},
        {"t", "Could not create site images directory: " + (dir / "t/images").string()},
    };
    const auto before = file_tree(dir.path());
    std::string error;
    for (const auto& [folder, words] : cases) {
        EXPECT_FALSE(create_site(dir / folder, "T", &error));
        EXPECT_EQ(error, words);
    }
    EXPECT_EQ(file_tree(dir.path()), before);
    bool created = true;
    {
        const FileSizeLimit limit(20);
        created = create_site(dir / "full", "T", &error);
    }
    EXPECT_FALSE(created);
    EXPECT_EQ(error, "Could not write " + (dir / "full/.lumenfold-site").string());
    EXPECT_TRUE(fs::is_directory(dir / "full/images"));
}

TEST(CollectProjects, GivesARowForEachEntry) {
    const TempDir dir;
    write_site(dir.path());
    write_file(dir / "projects/core/.lumenfold-project", R"(["slug"])");
    Json site = *read_json_file(dir / ".lumenfold-site");
    site["projects"].push_back("no object");
    std::string text;
    for (const ProjectRow& row : collect_projects(site, dir.path()))
        text += std::to_string(row.index) + row.slug + "<" + row.parent_slug + " ";
    EXPECT_EQ(text, "0< 1x<core 2< 3y<core 4zed< 5< ");
    for (const char* projects : {"{}", "null"}) {
        site["projects"] = Json::parse(projects);
        EXPECT_TRUE(collect_projects(site, dir.path()).empty()) << projects;
    }
    const std::pair<const char*, const char*> types[] = {
        {"5", "number"}, {"null", "null"}, {"[]", "array"}};
    for (const auto& [value, type] : types) {
        write_file(dir / "projects/zed/.lumenfold-project",
                   std::string("{\"slug\": ") + value + "}");
        try {
            collect_projects(*read_json_file(dir / ".lumenfold-site"), dir.path());
            ADD_FAILURE() << "no error for " << value;
        } catch (const Json::type_error& problem) {
            EXPECT_TRUE(std::string(problem.what())
                            .ends_with(std::string("type must be string, but is ") + type));
        }
    }
}

TEST(CreateProject, WritesItsFile) {
    struct Case {
        NewProjectRecord record;
        std::string folder;
        const char* project;
    };
    const Case cases[] = {
        {{"Full é", "full", "tag", "", "no family"},
         "full",
         R"({"format":1,"slug":"full","name":"Full é","tagline":"tag"})"},
        {{"Api", "core-api", "tag", "core", "API"},
         "core-api",
         R"({"format":1,"slug":"core-api","parent_slug":"core","name":"Api","tagline":"tag",
             "family_label":"API"})"},
        {{"Zed", "zed", "", "core", ""}, // unique within the family only
         "core-zed",
         R"({"format":1,"slug":"zed","parent_slug":"core","name":"Zed"})"},
    };
    const TempDir dir;
    const fs::path site = write_site(dir.path());
    for (const Case& c : cases) {
        fs::path created;
        std::string error;
        ASSERT_TRUE(create_project(site, c.record, &created, &error)) << error;
        EXPECT_EQ(created, dir.path() / "projects" / c.folder / ".lumenfold-project");
        EXPECT_EQ(read_file(created), normal_form(c.project));
    }
}

TEST(CreateProject, SaysWhatItCannotWrite) {
    const TempDir dir;
    const fs::path site = write_site(dir.path());
    const NewProjectRecord plain = {"N", "n", "", "", ""};
    std::string error;
    fs::create_directory(dir / "projects/n");
    const auto before = file_tree(dir.path());
    {
        const ReadOnly read_only(dir.path());
        EXPECT_FALSE(create_project(site, plain, nullptr, &error));
        EXPECT_EQ(error, "Could not write " + (dir / "projects/n/.lumenfold-project").string());
    }
    EXPECT_EQ(file_tree(dir.path()), before);
    write_file(site, R"({"projects": [], "long": ")" + std::string(4000, 'x') + "\"}");
    bool created = true;
    {
        const FileSizeLimit limit(1000);
        created = create_project(site, plain, nullptr, &error);
    }
    EXPECT_FALSE(created);
    EXPECT_EQ(error, "Could not write " + site.string());
    EXPECT_TRUE(fs::is_empty(dir / "projects/n")) << "the new folder stays, empty";
}

/// A thousand projects: what the panels ask for at each fill and each edit stays quick.
TEST(LargeSite, IsReadAndChangedQuickly) {
    constexpr int PROJECTS = 1000;
    constexpr double LIMIT = 3000; // some 100 ms when optimised; a quadratic cost takes far more
    const TempDir dir;
    Json site = {{"projects", Json::array()}};
    for (int i = 0; i < PROJECTS; ++i) {
        const std::string folder = "projects/p-" + std::to_string(i);
        write_file(dir / (folder + "/.lumenfold-project"),
                   R"({"slug": "p-)" + std::to_string(i) + "\"}");
        site["projects"].push_back({{"config", "./" + folder + "/.lumenfold-project"}});
    }
    write_file(dir / ".lumenfold-site", site.dump());
    const std::clock_t start = std::clock();
    EXPECT_EQ(collect_projects(site, dir.path()).size(), 1000u);
    EXPECT_TRUE(create_project(dir / ".lumenfold-site", {"N", "n", "", "", ""}, nullptr, nullptr));
    EXPECT_LT(1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, LIMIT);
}

} // namespace
} // namespace Lumenfold
