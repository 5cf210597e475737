// Every operation once, on one site: what it leaves must keep to the schemas. FORMATS_FOLDER takes
// the files for that check.
#include "site/config_files.h"
#include "site/new_project.h"
#include "site/new_site.h"
#include "site/promotion.h"
#include "site/records.h"
#include "site/registry.h"
#include "site/site_support.h"
#include "site/versions.h"

#include <cstdlib>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::TempDir;

void fill_site(const fs::path& site) {
    EXPECT_TRUE(add_social(site, {"Forge", "@us", "https://forge.example", "/images/f.svg", true},
                           nullptr));
    EXPECT_TRUE(add_social(site, {"Post", "", "mailto:us", "", false}, nullptr));
    EXPECT_TRUE(remove_record(site, "socials", {1, {{"label", "Post"}}}));
    EXPECT_TRUE(add_policy(site, {"privacy", "Privacy", "T", "policies/p.md", false}, nullptr));
    EXPECT_TRUE(add_policy(site, {"conduct", "Conduct", "T", "policies/c.md", true}, nullptr));
    EXPECT_TRUE(remove_policy(site, {1, {{"slug", "conduct"}}}));
    const std::string id = unique_section_id(site, "intro");
    const Json section = {{"type", "custom"}, {"id", id},      {"label", "Intro"},
                          {"icon", "/i.svg"}, {"subtext", ""}, {"body", ""}};
    EXPECT_EQ(create_home_section_fragment(site.parent_path(), id),
              "/content-fragments/intro_home.html");
    EXPECT_TRUE(add_home_section(site, section));
    EXPECT_TRUE(move_home_section(site, {3, {{"id", id}}}, -2));
    EXPECT_TRUE(remove_home_section(site, {0, {{"type", "description"}}}));
}

void fill_project(const fs::path& project) {
    EXPECT_TRUE(add_dependency(project, {"zlib", "https://zlib.example", "/i.svg", true}, nullptr));
    EXPECT_TRUE(add_download(project, {"https://d.example", "/i.svg", "Linux", "1 MB"}, nullptr));
    EXPECT_TRUE(add_fact(project, {"License", "MIT", "https://mit.example", "free"}, nullptr));
    EXPECT_TRUE(add_empty_object(project, "repo", nullptr));
    for (const char* label : {"1.0", "1.1", "1.2"})
        EXPECT_TRUE(include_version(project, label, "2026-01-01"));
    EXPECT_TRUE(exclude_version(project, "1.1"));
    const fs::path manifest = manifest_path(project.parent_path(), "../../source");
    fs::create_directories(manifest.parent_path());
    EXPECT_TRUE(add_topic(manifest, {"start", "Start", "First steps", "I", "start.md"}, nullptr));
    EXPECT_TRUE(add_topic(manifest, {"end", "", "", "", "end.md"}, nullptr));
    EXPECT_TRUE(remove_topic(manifest, {1, {{"slug", "end"}}}));
}

TEST(Walk, ThroughAllOperations) {
    const TempDir temporary;
    const char* folder = std::getenv("FORMATS_FOLDER");
    const fs::path root = folder ? fs::path(folder) : temporary.path();
    fs::remove_all(root / "site");
    ASSERT_TRUE(create_site(root / "site", "Walk", nullptr));
    const fs::path site = root / "site" / SITE_FILE_NAME;
    fill_site(site);
    fs::path project;
    ASSERT_TRUE(create_project(site, {"Gauge", "gauge", "Reads", "", ""}, &project, nullptr));
    fill_project(project);
    fs::path member;
    ASSERT_TRUE(promote_to_family(site, project, "core", "Core", nullptr, &member, nullptr));
    ASSERT_TRUE(create_project(site, {"CLI", "cli", "", "gauge", "CLI"}, nullptr, nullptr));
    ASSERT_TRUE(create_project(site, {"Old", "old", "", "", ""}, &project, nullptr));
    EXPECT_TRUE(remove_projects(site, {project}));
    EXPECT_TRUE(add_project_entry(site, "./projects/old/.lumenfold-project"));
    EXPECT_EQ(collect_projects(*read_json_file(site), site.parent_path()).size(), 4u);
    EXPECT_EQ((*read_json_file(member))["versions"].size(), 2u);
}

} // namespace
} // namespace Lumenfold
