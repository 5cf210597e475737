#include "site/config_files.h"
#include "site/failing_disk.h"
#include "site/new_project.h"
#include "site/new_site.h"
#include "site/promotion.h"
#include "site/registry.h"
#include "site/site_support.h"

#include <ctime>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::file_tree;
using TestSupport::read_file;
using TestSupport::TempDir;
using TestSupport::write_file;

TEST(CreateSite, WritesTheDefaultTextAndFolders) {
    const TempDir dir;
    write_file(dir / "new/other", "kept");
    std::string error;
    ASSERT_TRUE(create_site(dir / "new", "Tide \"&\" \n—", &error)) << error;
    const std::time_t now = std::time(nullptr);
    const std::string year = std::to_string(1900 + std::localtime(&now)->tm_year);
    std::string text = read_file(SOURCE_ROOT "/tests/site/cases/created_site.json");
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

/// Not even the way back works: the words say where the files are then.
TEST(PromoteToFamily, TellsWhereAnUndoLeftTheFiles) {
    const TempDir dir;
    write_file(dir / ".lumenfold-site", R"({"projects": [{"config": "p/.lumenfold-project"}]})");
    const fs::path project = dir / "p/.lumenfold-project";
    write_file(project, R"({"slug": "p", "long": ")" + std::string(200, 'x') + "\"}");
    const std::string text = read_file(project);
    std::string error;
    {
        const TestSupport::FileSizeLimit limit(150);
        const TestSupport::FailingDisk disk({.renames = 1});
        EXPECT_FALSE(
            promote_to_family(dir / ".lumenfold-site", project, "m", "", nullptr, nullptr, &error));
    }
    const std::string root = dir.path().string();
    EXPECT_EQ(error, "Could not write " + root +
                         "/p-m/.lumenfold-project. The project's files are " + "now in " + root +
                         "/p-m.");
    EXPECT_EQ(read_file(dir / "p-m/.lumenfold-project"), text);
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
