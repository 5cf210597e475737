#include "project_fixture.h"

namespace TestSupport {
namespace {

const std::string BUILD = BUILD_PANEL + "/Build Button";
const std::string LOG = BUILD_PANEL + "/Output Editor";
const std::string ADVANCED = BUILD_PANEL + "/Advanced Row/Advanced Checkbox";
const std::string SITE_BUILD_PANEL = PANELS + "/Build Panel";
const std::string SITE_BUILD = SITE_BUILD_PANEL + "/Actions Row/Build Button";
const std::string SITE_LOG = SITE_BUILD_PANEL + "/Output Editor";
const std::string SITE_ADVANCED = SITE_BUILD_PANEL + "/Advanced Row/Advanced Checkbox";
const std::string VERSIONS_LIST = VERSIONS_PANEL + "/Versions Table/Versions List";
const std::string STATUS = VERSIONS_PANEL + "/Status Message";

using Words = std::vector<std::string>;

struct Builds : ProjectTest {
    void open_site() {
        write_file(site, R"({"title": "T"})");
        ui.start({site});
        ui.click(section_tab("Build"));
    }
    FakePlatform::Process start_site_build() {
        ui.click(SITE_BUILD);
        return ui.platform.processes.back();
    }
    void finish(const FakePlatform::Process& process, const Words& lines, int code) {
        for (const std::string& line : lines)
            process.on_line(line);
        process.on_exit(code);
        refresh();
    }
};

TEST_F(Builds, TheSiteBuildShowsWhatTheBuilderSays) {
    struct Case {
        const char* name;
        bool advanced;
        Words lines;
        int code;
        std::string log;
    };
    const std::string config = site.string();
    const Case cases[] = {
        {"success",
         false,
         {"I\tReading", "E\tOdd", "A\tdetail"},
         0,
         "Reading\nOdd\n\n=== Build Complete ==="},
        {"advanced",
         true,
         {"A\tdetail"},
         0,
         "[Site] Config: " + config + "\ndetail\n\n=== Build Complete ==="},
        {"failure", false, {"I\tx"}, 3, "x\n\n=== Build Failed ==="},
        {"noise",
         false,
         {"plain", "Z\tunknown", "", "I"},
         0,
         "plain\nZ\tunknown\n\nI\n\n=== Build Complete ==="},
        {"missing",
         false,
         {},
         -1,
         "[Site] Error: lumenfold-cli did not run (expected beside this executable).\n\n"
         "=== Build Failed ==="},
    };
    open_site();
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        if (ui.has_state(SITE_ADVANCED, "Checked") != row.advanced)
            ui.click(SITE_ADVANCED);
        const FakePlatform::Process process = start_site_build();
        EXPECT_EQ(process.argv, (Words{"lumenfold-cli", "site", "build", config, "--porcelain"}));
        EXPECT_TRUE(ui.has_state(SITE_BUILD, "Disabled"));
        const std::size_t started = ui.platform.processes.size();
        ui.click(SITE_BUILD);
        EXPECT_EQ(ui.platform.processes.size(), started) << "one build at a time";
        finish(process, row.lines, row.code);
        EXPECT_EQ(ui.text(SITE_LOG), row.log);
        EXPECT_FALSE(ui.has_state(SITE_BUILD, "Disabled"));
    }
}

TEST_F(Builds, TheSitesOutputFolderOpensOnlyWhileItExists) {
    open_site();
    const std::filesystem::path output = ui.dir / "output";
    const FakePlatform::Process process = start_site_build();
    finish(process, {"O\t" + output.string(), "I\tdone"}, 0);
    EXPECT_EQ(ui.text(SITE_LOG), "done\n\n=== Build Complete ===");
    ui.click(SITE_BUILD_PANEL + "/Actions Row/Output Button");
    EXPECT_TRUE(ui.platform.opened_urls.empty());
    std::filesystem::create_directory(output);
    ui.click(SITE_BUILD_PANEL + "/Actions Row/Output Button");
    EXPECT_EQ(ui.platform.opened_urls, Words{"file://" + output.string()});
}

TEST_F(Builds, ABuildSeesTheEditsOfTheLastMoment) {
    write_file(site, R"({"title": "Old"})");
    ui.start({site});
    ui.type(TITLE_FIELD, "New");
    ui.click(section_tab("Build"));
    ui.click(SITE_BUILD);
    EXPECT_EQ(read_file(site), "{\n  \"title\": \"New\"\n}\n");
}

TEST_F(Builds, TheVersionsTableComesFromTheBuilder) {
    open();
    show("Versions");
    list_versions({"R\t1.2\t1.2.3\t2026-01-02\tpending\t1", "R\t1.1\tv1.1\t\texcluded\t0",
                   "R\tfour\tfields\tonly\t1", "R\t1.0\t1.0.0\t2025-01-01\tno-tag\tyes", "E\tfirst",
                   "E\t", "E\tsecond", "noise"});
    EXPECT_EQ(ui.rows(VERSIONS_LIST),
              (Words{"version-0", "version-0:sep", "version-1", "version-1:sep", "version-2"}));
    EXPECT_EQ(ui.reading(VERSIONS_LIST + "/version-0"), "1.2|.3|2026-01-02|Pending");
    EXPECT_EQ(ui.reading(VERSIONS_LIST + "/version-1"), "1.1|v1.1|Excluded");
    EXPECT_EQ(ui.reading(VERSIONS_LIST + "/version-2"), "1.0|.0|2025-01-01|No Tag");
    EXPECT_EQ(ui.text(STATUS), "first\nsecond");
    const std::string checkbox = "/Include Cell/Include Checkbox";
    EXPECT_TRUE(ui.has_state(VERSIONS_LIST + "/version-0" + checkbox, "Checked"));
    EXPECT_FALSE(ui.has_state(VERSIONS_LIST + "/version-1" + checkbox, "Checked"));
    EXPECT_FALSE(ui.has_state(VERSIONS_LIST + "/version-2" + checkbox, "Checked"));
    EXPECT_TRUE(ui.has_state(VERSIONS_LIST + "/version-1", "Excluded"));
    EXPECT_FALSE(ui.has_state(VERSIONS_LIST + "/version-0", "Excluded"));
}

TEST_F(Builds, AnEmptyTableSaysWhy) {
    const std::string none = "No versions yet — tag the project's repo (X.Y.Z) to list them here.";
    const std::string missing = "lumenfold-cli did not run (expected beside this executable).";
    struct Case {
        Words lines;
        int code;
        std::string status;
    };
    const Case cases[] = {
        {{}, 0, none}, {{}, -1, missing}, {{}, -2, missing}, {{"E\tno"}, 2, "no"}};
    open();
    show("Versions");
    for (const Case& row : cases) {
        ui.click(PROJECT + "/View Bar/Text View Tab");
        ui.click(PROJECT + "/View Bar/Editor View Tab"); // fills the panels anew
        list_versions(row.lines, row.code);
        EXPECT_EQ(ui.text(STATUS), row.status);
        EXPECT_FALSE(ui.shown(VERSIONS_PANEL + "/Versions Table"));
    }
}

TEST_F(Builds, AProjectIsBuiltForItsPendingVersions) {
    open();
    show("Build");
    const std::string pending = "R\t1.2\t1.2.0\t\tpending\t1";
    list_versions({pending, "R\t1.1\t1.1.0\t\tcomplete\t1", "R\t1.0\t1.0.0\t\tpending\t1"});
    EXPECT_EQ(ui.text(BUILD + "/Label"), "Build 2 Pending");
    EXPECT_FALSE(ui.has_state(BUILD, "Disabled"));

    ui.click(ADVANCED);
    ui.click(BUILD);
    ASSERT_EQ(runs("build").size(), 1u);
    const FakePlatform::Process build = *runs("build").back();
    EXPECT_EQ(build.argv, (Words{"lumenfold-cli", "build", file.string(), "--porcelain"}));
    EXPECT_TRUE(ui.has_state(BUILD, "Disabled"));
    ui.click(BUILD);
    EXPECT_EQ(runs("build").size(), 1u);

    const std::size_t listings = runs("versions").size();
    finish(build, {"O\tx", "I\tok"}, 0);
    EXPECT_EQ(ui.text(LOG),
              "[Build] Config: " + file.string() + "\nO\tx\nok\n\n=== Build Complete ===");
    EXPECT_EQ(runs("versions").size(), listings + 1) << "the table is asked for anew";
    list_versions({"R\t1.2\t1.2.0\t\tcomplete\t1"});
    EXPECT_EQ(ui.text(BUILD + "/Label"), "Nothing Pending");
    EXPECT_TRUE(ui.has_state(BUILD, "Disabled"));
    ui.click(BUILD);
    EXPECT_EQ(runs("build").size(), 1u) << "nothing is pending";

    ui.click(PROJECT + "/View Bar/Text View Tab");
    ui.click(PROJECT + "/View Bar/Editor View Tab");
    list_versions({pending}, 3);
    EXPECT_EQ(ui.text(BUILD + "/Label"), "Nothing Pending") << "a failed listing counts nothing";
}

TEST_F(Builds, ASiteBuildKeepsAProjectWaitingAndThenLetsItGo) {
    open_site();
    const FakePlatform::Process site_build = start_site_build();
    ui.platform.next_picks = {file.string()};
    write_file(file, R"({"slug": "solo"})");
    ui.click(WINDOW + "/Titlebar/Right Tabs/App Tab");
    ui.click(HOME + "/Open Button");
    show("Build");
    list_versions({"R\t1.2\t1.2.0\t\tpending\t1"});
    EXPECT_TRUE(ui.has_state(BUILD, "Disabled"));
    finish(site_build, {}, 0);
    EXPECT_FALSE(ui.has_state(BUILD, "Disabled"));
}

TEST_F(Builds, AnAnswerForAnotherProjectIsDropped) {
    open();
    const FakePlatform::Process first = *runs("versions").back();
    write_file(ui.dir / "other/.lumenfold-project", R"({"slug": "other"})");
    ui.platform.next_picks = {(ui.dir / "other/.lumenfold-project").string()};
    ui.click(WINDOW + "/Titlebar/Right Tabs/App Tab");
    ui.click(HOME + "/Open Button");
    list_versions({"R\t2.0\t2.0.0\t\tcomplete\t1"});
    finish(first, {"R\t1.0\t1.0.0\t\tpending\t1"}, 0);
    show("Versions");
    EXPECT_EQ(ui.reading(VERSIONS_LIST), "2.0|.0|Complete");
}

TEST_F(Builds, ExcludingAsksBeforeOutputIsDeleted) {
    open(R"("versions": [{"label": "1.2", "release_date": "2026-01-02"}])");
    show("Versions");
    write_file(ui.dir / "projects/solo/versions/1.2/index.html", "built");
    write_file(ui.dir / "projects/solo/versions/1.1/index.html", "kept");
    const std::string row = "R\t1.2\t1.2.0\t2026-01-02\tcomplete\t1";
    list_versions({row});
    const std::string checkbox = VERSIONS_LIST + "/version-0/Include Cell/Include Checkbox";
    ui.click(checkbox);
    EXPECT_TRUE(ui.has_state(checkbox, "Checked")) << "only a new table changes the mark";
    EXPECT_EQ(ui.question(), "Exclude Version: Exclude 1.2 and delete its generated output? "
                             "Re-check Include to declare it again. [Exclude]");
    ui.cancel();
    EXPECT_TRUE(std::filesystem::exists(ui.dir / "projects/solo/versions/1.2/index.html"));

    ui.click(checkbox);
    ui.confirm();
    EXPECT_FALSE(std::filesystem::exists(ui.dir / "projects/solo/versions/1.2"));
    EXPECT_TRUE(std::filesystem::exists(ui.dir / "projects/solo/versions/1.1/index.html"));
    EXPECT_NE(read_file(file).find("\"versions\": [],\n  \"versions_excluded\": [\n    \"1.2\"\n"),
              std::string::npos)
        << read_file(file);

    list_versions({"R\t1.2\t1.2.0\t2026-01-02\texcluded\t0"});
    ui.click(checkbox);
    EXPECT_EQ(ui.question(), "");
    EXPECT_NE(read_file(file).find("\"release_date\": \"2026-01-02\""), std::string::npos);
    EXPECT_NE(read_file(file).find("\"versions_excluded\": []"), std::string::npos);
}

TEST_F(Builds, ALongLogIsTakenWithoutAGrowingCost) {
    open_site();
    const FakePlatform::Process process = start_site_build();
    for (int i = 0; i < 100000; ++i)
        process.on_line("I\tline " + std::to_string(i));
    finish(process, {}, 0);
    const std::string log = ui.text(SITE_LOG);
    EXPECT_TRUE(log.starts_with("line 0\nline 1\n"));
    EXPECT_TRUE(log.ends_with("line 99999\n\n=== Build Complete ==="));
}

} // namespace
} // namespace TestSupport
