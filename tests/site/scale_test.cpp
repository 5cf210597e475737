#include "site/config_files.h"
#include "site/creation.h"
#include "site/records.h"
#include "site/site_support.h"
#include "site/versions.h"

#include <ctime>
#include <functional>
#include <iostream>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::TempDir;
using TestSupport::write_file;

constexpr int PROJECTS = 1000;
constexpr int VERSIONS = 5; // of each project

#ifdef NDEBUG
constexpr double SLOWNESS = 1;
#else
constexpr double SLOWNESS = 10; // without optimisation, maybe with sanitizers
#endif

/// A site of 250 families of four, each project with its declared and built versions.
fs::path write_large_site(const fs::path& root) {
    Json site = {{"format", 1}, {"title", "Large"}, {"projects", Json::array()}};
    for (int i = 0; i < PROJECTS; ++i) {
        const std::string slug = "project-" + std::to_string(i);
        Json project = {{"format", 1}, {"slug", slug}};
        if (i % 4 != 0)
            project["parent_slug"] = "project-" + std::to_string(i - i % 4);
        project["name"] = "Project " + std::to_string(i);
        project["tagline"] = "One of a thousand, with a tagline of the usual length";
        project["logo"] = "/images/" + slug + ".svg";
        project["facts"] = {{{"label", "License"}, {"value", "MIT"}}};
        project["versions"] = Json::array();
        const fs::path folder = root / "projects" / slug;
        for (int v = VERSIONS; v > 0; --v) {
            const std::string label = "1." + std::to_string(v);
            project["versions"].push_back(
                {{"label", label}, {"release_date", "2026-01-01"}, {"license_display", "MIT"}});
            write_file(folder / "versions" / label / ".lumenfold-built",
                       "{\"format\": 1, \"tag\": \"" + label + ".0\", \"commit\": \"0\"}");
        }
        write_file(folder / ".lumenfold-project", *dump_config(project));
        site["projects"].push_back({{"config", "./projects/" + slug + "/.lumenfold-project"}});
    }
    write_file(root / ".lumenfold-site", *dump_config(site));
    return root / ".lumenfold-site";
}

/// Checks the processor time of `run`, which other processes do not lengthen.
void expect_within(double milliseconds, const char* what, const std::function<void()>& run) {
    const std::clock_t start = std::clock();
    run();
    const double used = 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    std::cout << "  " << what << ": " << used << " ms\n";
    EXPECT_LT(used, milliseconds * SLOWNESS) << what;
}

TEST(LargeSite, StaysQuick) {
    const TempDir dir;
    const fs::path file = write_large_site(dir.path());
    const fs::path project = dir / "projects/project-500/.lumenfold-project";
    expect_within(150, "rows and cards of 1,000 projects", [&] {
        const Json site = *read_json_file(file);
        EXPECT_EQ(collect_projects(site, dir.path()).size(), 1000u);
        std::size_t cards = 0;
        for (const Json& entry : site["projects"])
            cards += read_project_info(text_at(entry, "config"), dir.path()).parent_slug.empty();
        EXPECT_EQ(cards, 250u);
    });
    expect_within(150, "discovery of 5,000 versions", [&] {
        std::size_t found = 0;
        for (int i = 0; i < PROJECTS; ++i)
            found += discover_versions(dir / ("projects/project-" + std::to_string(i))).size();
        EXPECT_EQ(found, 5000u);
    });
    expect_within(20, "one social", [&] { add_social(file, {"l", "", "u", "", true}, nullptr); });
    expect_within(20, "one home section", [&] { add_home_section(file, Json::object()); });
    expect_within(20, "one fact", [&] { add_fact(project, {"l", "v", "", ""}, nullptr); });
    expect_within(20, "one version", [&] { include_version(project, "1.6", "D"); });
    expect_within(20, "one registry entry", [&] { add_project_entry(file, "./projects/new/x"); });
    expect_within(20, "four registry entries less", [&] {
        std::vector<fs::path> family;
        for (int i = 500; i < 504; ++i)
            family.push_back(dir / ("projects/project-" + std::to_string(i)) /
                             ".lumenfold-project");
        remove_projects(file, family);
    });
    EXPECT_EQ((*read_json_file(file))["projects"].size(), 997u);
}

} // namespace
} // namespace Lumenfold
