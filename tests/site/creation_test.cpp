#include "site/config_files.h"
#include "site/creation.h"
#include "site/site_support.h"

#include <chrono>
#include <ctime>
#include <system_error>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::file_tree;
using TestSupport::FileSizeLimit;
using TestSupport::normal_form;
using TestSupport::on_private_disk;
using TestSupport::PrivateDisk;
using TestSupport::read_file;
using TestSupport::TempDir;
using TestSupport::write_file;

std::string this_year() {
    const std::time_t now = std::time(nullptr);
    return std::to_string(1900 + std::localtime(&now)->tm_year);
}

/// An entry of a registry and the project that it refers to.
struct Registered {
    const char* folder;
    const char* project; ///< its configuration; null for none
};

/// Writes a site at `root` and gives its configuration.
fs::path write_site(const fs::path& root, const std::vector<Registered>& projects) {
    std::string entries;
    for (const Registered& entry : projects) {
        const std::string reference =
            std::string("projects/") + entry.folder + "/.lumenfold-project";
        entries += (entries.empty() ? "" : ",") + ("{\"config\": \"./" + reference + "\"}");
        if (entry.project)
            write_file(root / reference, entry.project);
    }
    write_file(root / ".lumenfold-site",
               "{\"title\": \"T\", \"projects\": [" + entries + "], \"last\": 1}");
    return root / ".lumenfold-site";
}

TEST(IsValidSlug, WantsDashSeparatedRuns) {
    for (const char* slug : {"a", "a-1", "0", "a-b-c", "2-2"})
        EXPECT_TRUE(is_valid_slug(slug)) << slug;
    for (const char* slug : {"", "-", "-a", "a-", "a--b", "A", "a_b", "a b", "ä", "a.b", "a/b"})
        EXPECT_FALSE(is_valid_slug(slug)) << slug;
}

TEST(CreateSite, WritesTheDefaultTextAndFolders) {
    const TempDir dir;
    write_file(dir / "new" / "other", "kept");
    std::string error;
    ASSERT_TRUE(create_site(dir / "new", "Tide \"&\" \n—", &error)) << error;
    const std::string title = "\"Tide \\\"&\\\" \\n—\"";
    const std::string text = "{\n"
                             "  \"format\": 1,\n"
                             "  \"title\": " +
                             title +
                             ",\n"
                             "  \"description\": \"A new site\",\n"
                             "  \"copyright\": \"(c) " +
                             this_year() + " " + title.substr(1) +
                             ",\n"
                             "  \"output\": \"./output\",\n"
                             "  \"branding\": {\n"
                             "    \"tab_text\": " +
                             title +
                             "\n"
                             "  },\n"
                             "  \"footer_links\": [],\n"
                             "  \"projects\": [],\n"
                             "  \"socials\": [],\n"
                             "  \"home\": {\n"
                             "    \"sections\": [\n"
                             "      { \"type\": \"description\" },\n"
                             "      { \"type\": \"projects\" },\n"
                             "      { \"type\": \"socials\" }\n"
                             "    ]\n"
                             "  },\n"
                             "  \"pages\": {\n"
                             "    \"home_title\": " +
                             title +
                             "\n"
                             "  }\n"
                             "}\n";
    const std::map<std::string, std::string> tree = {
        {".lumenfold-site", text}, {"content-fragments/", ""}, {"images/", ""}, {"other", "kept"}};
    EXPECT_EQ(file_tree(dir / "new"), tree);
    EXPECT_TRUE(check_format(dir / "new" / ".lumenfold-site", &error));
    EXPECT_EQ(read_title(dir / "new" / ".lumenfold-site", ConfigKind::Site), "Tide \"&\" \n—");

    ASSERT_TRUE(create_site(dir / "deep" / "er", "", nullptr)) << "with its parents";
    EXPECT_EQ(read_title(dir / "deep" / "er" / ".lumenfold-site", ConfigKind::Site), "My Site");
}

TEST(CreateSite, SaysWhatStandsInTheWay) {
    const TempDir dir;
    const auto expect_refused = [&](const fs::path& folder, const std::string& words) {
        SCOPED_TRACE(words);
        const auto before = file_tree(dir.path());
        std::string error;
        EXPECT_FALSE(create_site(folder, "T", &error));
        EXPECT_EQ(error, words);
        EXPECT_FALSE(create_site(folder, "T", nullptr));
        return before;
    };
    for (const char* kind : {"file", "folder", "dangling"}) {
        const fs::path folder = dir / kind;
        fs::create_directories(folder);
        if (kind == std::string("file"))
            write_file(folder / ".lumenfold-site", "");
        else if (kind == std::string("folder"))
            fs::create_directory(folder / ".lumenfold-site");
        else
            fs::create_symlink("nowhere", folder / ".lumenfold-site");
        EXPECT_EQ(expect_refused(folder, ".lumenfold-site already exists in " + folder.string()),
                  file_tree(dir.path()));
    }
    write_file(dir / "a file", "");
    EXPECT_EQ(expect_refused(dir / "a file", "Could not create site directory: " +
                                                 (dir / "a file/content-fragments").string()),
              file_tree(dir.path()));
    write_file(dir / "s" / "content-fragments", "");
    EXPECT_EQ(expect_refused(dir / "s", "Could not create site directory: " +
                                            (dir / "s/content-fragments").string()),
              file_tree(dir.path()));
    write_file(dir / "t" / "images", "");
    auto tree = expect_refused(dir / "t", "Could not create site images directory: " +
                                              (dir / "t/images").string());
    tree["t/content-fragments/"] = "";
    EXPECT_EQ(file_tree(dir.path()), tree);
}

TEST(CreateSite, KeepsTheFoldersWhenTheFileFails) {
    const TempDir dir;
    std::string error;
    bool created = true;
    {
        const FileSizeLimit limit(20);
        created = create_site(dir / "s", "T", &error);
    }
    EXPECT_FALSE(created);
    EXPECT_EQ(error, "Could not write " + (dir / "s/.lumenfold-site").string());
    EXPECT_TRUE(fs::is_directory(dir / "s/content-fragments"));
    EXPECT_TRUE(fs::is_directory(dir / "s/images"));

    const bool permitted = on_private_disk("size=64k,nr_inodes=50", [](const PrivateDisk& disk) {
        disk.leave_inodes(2); // for the two folders
        std::string words;
        EXPECT_FALSE(create_site(disk.path(), "T", &words));
        EXPECT_EQ(words, "Could not write " + (disk.path() / ".lumenfold-site").string());
        EXPECT_TRUE(fs::is_directory(disk.path() / "images"));
        EXPECT_FALSE(fs::exists(disk.path() / ".lumenfold-site"));
    });
    if (!permitted)
        GTEST_SKIP() << "mounting is not permitted here";
}

TEST(CollectProjects, GivesARowForEachEntry) {
    const TempDir dir;
    write_site(dir.path(), {{"a", R"({"slug": "a"})"},
                            {"b", R"({"slug": "b", "parent_slug": "a"})"},
                            {"gone", nullptr},
                            {"bad", "{"},
                            {"list", "[\"slug\"]"},
                            {"odd", R"({"parent_slug": 5})"}});
    Json site = *read_json_file(dir / ".lumenfold-site");
    site["projects"].push_back("no object");
    const std::vector<ProjectRow> rows = collect_projects(site, dir.path());
    ASSERT_EQ(rows.size(), 7u);
    std::string text;
    for (const ProjectRow& row : rows)
        text += std::to_string(row.index) + row.slug + "<" + row.parent_slug + " ";
    EXPECT_EQ(text, "0a< 1b<a 2< 3< 4< 5< 6< ");
    EXPECT_EQ(rows[1].config, dir / "projects" / "b" / ".lumenfold-project");
    EXPECT_EQ(rows[2].config, dir / "projects" / "gone" / ".lumenfold-project");

    for (const char* projects : {"{}", "5", "null", "\"x\""}) {
        site["projects"] = Json::parse(projects);
        EXPECT_TRUE(collect_projects(site, dir.path()).empty()) << projects;
    }
    EXPECT_TRUE(collect_projects(Json(5), dir.path()).empty());

    const std::pair<const char*, const char*> types[] = {
        {"5", "number"}, {"null", "null"}, {"[]", "array"}, {"{}", "object"}, {"true", "boolean"}};
    for (const auto& [value, type] : types) {
        write_site(dir.path(), {{"a", nullptr}});
        write_file(dir / "projects/a/.lumenfold-project", std::string("{\"slug\": ") + value + "}");
        try {
            collect_projects(*read_json_file(dir / ".lumenfold-site"), dir.path());
            ADD_FAILURE() << "no error for " << value;
        } catch (const Json::type_error& problem) {
            EXPECT_TRUE(std::string(problem.what())
                            .ends_with(std::string("type must be string, but is ") + type))
                << problem.what();
        }
    }
}

TEST(CreateProject, PutsMembersBehindTheirFamily) {
    const std::vector<Registered> projects = {
        {"core", R"({"slug": "core"})"},
        {"core-x", R"({"slug": "x", "parent_slug": "core"})"},
        {"gone", nullptr},
        {"core-y", R"({"slug": "y", "parent_slug": "core"})"},
        {"zed", R"({"slug": "zed"})"},
    };
    struct Case {
        NewProjectRecord record;
        const char* folder;
        std::size_t place;
        const char* project;
    };
    const Case cases[] = {
        {{"Plain", "plain", "", "", ""},
         "plain",
         5,
         R"({"format":1,"slug":"plain","name":"Plain"})"},
        {{"Full é", "full", "tag", "", "no family"},
         "full",
         5,
         R"({"format":1,"slug":"full","name":"Full é","tagline":"tag"})"},
        {{"Api", "api", "tag", "core", "API"},
         "core-api",
         4,
         R"({"format":1,"slug":"api","parent_slug":"core","name":"Api","tagline":"tag",
             "family_label":"API"})"},
        {{"Api", "core-api", "", "core", ""},
         "core-api",
         4,
         R"({"format":1,"slug":"core-api","parent_slug":"core","name":"Api"})"},
        {{"Core", "core2", "", "core", ""},
         "core-core2",
         4,
         R"({"format":1,"slug":"core2","parent_slug":"core","name":"Core"})"},
        // Unique within the family only.
        {{"Zed", "zed", "", "core", ""},
         "core-zed",
         4,
         R"({"format":1,"slug":"zed","parent_slug":"core","name":"Zed"})"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.project);
        const TempDir dir;
        const fs::path site = write_site(dir.path(), projects);
        auto tree = file_tree(dir.path());
        fs::path created;
        std::string error;
        ASSERT_TRUE(create_project(site, c.record, &created, &error)) << error;
        const std::string folder = std::string("projects/") + c.folder + "/";
        EXPECT_EQ(created, dir.path() / (folder + ".lumenfold-project"));
        Json registry = Json::parse(tree[".lumenfold-site"]);
        const Json entry = {{"config", "./" + folder + ".lumenfold-project"}};
        registry["projects"].insert(
            registry["projects"].begin() + static_cast<std::ptrdiff_t>(c.place), entry);
        tree[folder];
        tree[folder + ".lumenfold-project"] = normal_form(c.project);
        tree[".lumenfold-site"] = *dump_config(registry);
        EXPECT_EQ(file_tree(dir.path()), tree);
    }
    const TempDir dir;
    write_file(dir / ".lumenfold-site", "{}");
    ASSERT_TRUE(create_project(dir / ".lumenfold-site", {"N", "n", "", "", ""}, nullptr, nullptr));
    EXPECT_EQ(read_file(dir / ".lumenfold-site"),
              normal_form(R"({"projects":[{"config":"./projects/n/.lumenfold-project"}]})"));
}

TEST(CreateProject, ChecksBeforeItChanges) {
    const TempDir dir;
    const std::string root = dir.path().string();
    const fs::path site =
        write_site(dir.path(), {{"core", R"({"slug": "core"})"},
                                {"core-x", R"({"slug": "x", "parent_slug": "core"})"}});
    const std::string registry = read_file(site);
    const std::string bad_slug = "Slug must be lowercase letters and digits in dash-separated runs "
                                 "(like \"profile-api\").";
    const std::string unread = "Cannot read site config: " + site.string();
    const std::string no_array = "'projects' is not an array in the site config.";
    write_file(dir / "projects/taken/.lumenfold-project", "");
    fs::create_directories(dir / "projects/core-taken/.lumenfold-project");
    write_file(dir / "projects/blocked", "a file in the way");
    struct Case {
        NewProjectRecord record;
        std::string words;
        std::string site_text; ///< empty for the registry
    };
    const NewProjectRecord plain = {"N", "n", "", "", ""};
    const std::string odd_slug =
        R"({"projects": [{"config": "odd"}]})"; // "odd" has a number for a slug
    write_file(dir / "odd", R"({"slug": 5})");
    const Case cases[] = {
        {{"", "n", "", "", ""}, "The project needs a name.", {}},
        {{"N", "a--b", "", "", ""}, bad_slug, {}},
        {{"N", "", "", "core", ""}, bad_slug, {}},
        {plain, unread, "{"},
        {plain, unread, "[]"},
        {plain, unread, "[1e999]"},
        {plain, unread, odd_slug},
        {plain, no_array, R"({"projects": {}})"},
        {plain, no_array, R"({"projects": null})"},
        {{"N", "x", "", "core", ""}, "The family already has a project with slug 'x'.", {}},
        {{"N", "core", "", "core", ""}, "The family already has a project with slug 'core'.", {}},
        {{"N", "n", "", "other", ""}, "No project with slug 'other' to add a member to.", {}},
        // A member is no family.
        {{"N", "n", "", "x", ""}, "No project with slug 'x' to add a member to.", {}},
        {{"N", "x", "", "", ""}, "A project with slug 'x' already exists in this site.", {}},
        {{"N", "taken", "", "", ""},
         root + "/projects/taken/.lumenfold-project already exists.",
         {}},
        {{"N", "taken", "", "core", ""},
         root + "/projects/core-taken/.lumenfold-project already exists.",
         {}},
        {{"N", "blocked", "", "", ""},
         "Could not create " + root +
             "/projects/blocked: " + std::make_error_code(std::errc::not_a_directory).message(),
         {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.words);
        write_file(site, c.site_text.empty() ? registry : c.site_text);
        const auto before = file_tree(dir.path());
        std::string error;
        fs::path created = "untouched";
        EXPECT_FALSE(create_project(site, c.record, &created, &error));
        EXPECT_EQ(error, c.words);
        EXPECT_EQ(created, "untouched");
        EXPECT_EQ(file_tree(dir.path()), before);
    }
    std::string error;
    EXPECT_FALSE(create_project(dir / "none", plain, nullptr, &error));
    EXPECT_EQ(error, "Cannot read site config: " + root + "/none");
}

TEST(CreateProject, SaysWhichFileItCannotWrite) {
    const TempDir dir;
    const fs::path site = write_site(dir.path(), {{"a", R"({"slug": "a"})"}});
    const NewProjectRecord record = {"N", "n", "", "", ""};
    std::string error;
    {
        // A folder that is there and in which nobody can make a file.
        fs::create_directory_symlink("/proc/self", dir / "projects" / "n");
        const auto before = read_file(site);
        EXPECT_FALSE(create_project(site, record, nullptr, &error));
        EXPECT_EQ(error, "Could not write " + (dir / "projects/n/.lumenfold-project").string());
        EXPECT_EQ(read_file(site), before);
        fs::remove(dir / "projects" / "n");
    }
    write_file(site, R"({"projects": [], "long": ")" + std::string(4000, 'x') + "\"}");
    bool created = true;
    {
        const FileSizeLimit limit(1000);
        created = create_project(site, record, nullptr, &error);
    }
    EXPECT_FALSE(created);
    EXPECT_EQ(error, "Could not write " + site.string());
    EXPECT_TRUE(fs::is_directory(dir / "projects/n"));
    EXPECT_TRUE(fs::is_empty(dir / "projects/n")) << "the new folder stays, empty";
    EXPECT_EQ(fs::file_size(site), 1000u) << "what the write left";
}

} // namespace
} // namespace Lumenfold
