#pragma once

#include "app/app_driver.h"
#include "app/site_paths.h"

#include <gtest/gtest.h>

namespace TestSupport {

inline const std::string PROJECT_SIDEBAR = PROJECT + "/Editor Panel/Sidebar";
inline const std::string PROJECT_PANELS = PROJECT + "/Editor Panel/Panels";
inline const std::string PROJECT_PANEL = PROJECT_PANELS + "/Project Panel";
inline const std::string SOURCE_PANEL = PROJECT_PANELS + "/Source Panel";
inline const std::string BUILD_PANEL = PROJECT_PANELS + "/Build Panel";
inline const std::string VERSIONS_PANEL = PROJECT_PANELS + "/Versions Panel";
inline const std::string FAMILY_BAR = PROJECT + "/Family Bar";
inline const std::string MEMBER_TABS = FAMILY_BAR + "/Member Tabs";

/// The application on a site of one project, "solo", whose source root is the folder "src".
struct ProjectTest : testing::Test {
    AppDriver ui;
    std::filesystem::path site = ui.dir / ".lumenfold-site";
    std::filesystem::path file = ui.dir / "projects/solo/.lumenfold-project";
    std::filesystem::path manifest = ui.dir / "src/.lumenfold";

    /// Opens the project with these further members of its configuration.
    void open(const std::string& members = "", const std::string& manifest_text = "") {
        write_file(site, R"({"projects": [{"config": "./projects/solo/.lumenfold-project"}]})");
        write_file(file, R"({"slug": "solo", "name": "Solo")" +
                             (members.empty() ? "" : ", " + members) + "}");
        if (!manifest_text.empty())
            write_file(manifest, manifest_text);
        ui.start({file});
    }
    void show(const std::string& tab) { ui.click(PROJECT_SIDEBAR + "/" + tab + " Tab"); }

    /// The builder runs started so far with this word behind the program's name.
    std::vector<FakePlatform::Process*> runs(const std::string& command) {
        std::vector<FakePlatform::Process*> found;
        for (FakePlatform::Process& process : ui.platform.processes)
            if (process.argv.size() > 1 && process.argv[1] == command)
                found.push_back(&process);
        return found;
    }
    /// Answers the latest question for versions.
    void list_versions(const std::vector<std::string>& lines, int code = 0) {
        // A callback may start the next process, so copies are called.
        const FakePlatform::Process process = *runs("versions").back();
        for (const std::string& line : lines)
            process.on_line(line);
        process.on_exit(code);
        refresh();
    }
    /// Lets what came outside an event reach the screen.
    void refresh() { ui.advance(0); }
};

} // namespace TestSupport
