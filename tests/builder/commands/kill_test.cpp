#include "builder/support/program_run.h"
#include "support/temp_dir.h"

#include <chrono>
#include <map>
#include <memory>
#include <random>
#include <thread>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using TestSupport::file_tree;
using TestSupport::output_of;
using TestSupport::RunningProgram;
using TestSupport::TempDir;

/// A site of which a part is built and a part waits, and what it has to be in the end.
class Killed : public testing::Test {
protected:
    static void SetUpTestSuite() {
        ::setenv("SOURCE_DATE_EPOCH", "1771146764", 1);
        dir_ = std::make_unique<TempDir>();
        run("a_site alpha beta\n"
            "for name in alpha beta; do release $name 1.0.0 LICENSE=1; done\n"
            "cli site build site --pending\n"
            "release alpha 1.0.1 LICENSE=2; release alpha 1.1.0 guides/start.md='# New'\n"
            "release beta 1.1.0 guides/start.md='# New'\n"
            "put site/custom.css='body { color: red }'\n"
            "cp -R site before; cp -R site fresh; rm -rf fresh/output fresh/projects/*/versions\n"
            "cli site build fresh --pending\n");
        expected_ = state_of(*dir_ / "fresh");
    }
    static void TearDownTestSuite() {
        dir_.reset();
        ::unsetenv("SOURCE_DATE_EPOCH");
    }

    static void run(const std::string& script) {
        TestSupport::write_file(*dir_ / "script", script);
        const std::string said = output_of(
            "cd '" + dir_->path().string() +
            "' && ROOT='" SOURCE_ROOT "' CLI='" LUMENFOLD_CLI
            "' HOME=\"$PWD\" sh -c '. \"$ROOT/tests/builder/commands/actions.sh\"; . ./script'");
        ASSERT_EQ(said.find("rror"), std::string::npos) << said;
    }

    static void start_over() {
        fs::remove_all(*dir_ / "site");
        fs::copy(*dir_ / "before", *dir_ / "site", fs::copy_options::recursive);
    }

    static std::vector<std::string> command() {
        return {LUMENFOLD_CLI, "site", "build", (*dir_ / "site").string(), "--pending"};
    }

    /// All that builds make, but for the list of what they made when.
    static std::map<std::string, std::string> state_of(const fs::path& site) {
        std::map<std::string, std::string> state;
        for (const char* part : {"output", "projects"})
            for (auto& [name, bytes] : file_tree(site / part))
                if (name != ".lumenfold-output" && !name.starts_with(".lumenfold-notes"))
                    state.emplace(std::string(part) + "/" + name, std::move(bytes));
        return state;
    }

    static void expect_finished_by_next_build() {
        EXPECT_EQ(RunningProgram(command()).wait(), 0);
        const auto state = state_of(*dir_ / "site");
        for (const auto& [name, bytes] : expected_)
            EXPECT_TRUE(state.contains(name) && state.at(name) == bytes) << name;
        for (const auto& [name, bytes] : state)
            EXPECT_TRUE(expected_.contains(name)) << name;
    }

    /// Each page is whole at any moment: an old one or a new one.
    static void expect_whole_pages() {
        for (const auto& [name, bytes] : file_tree(*dir_ / "site/output"))
            if (name.ends_with(".html") && !name.starts_with(".lumenfold-new")) {
                EXPECT_NE(bytes.find("</html>"), std::string::npos) << name;
            }
    }

    static inline std::unique_ptr<TempDir> dir_;
    static inline std::map<std::string, std::string> expected_;
};

/// How often is LUMENFOLD_KILLS's to say: a few times by default, for the suite.
TEST_F(Killed, AtAnyMomentABuildIsFinishedByTheNext) {
    ASSERT_GT(expected_.size(), 40U);
    start_over();
    const auto begin = Clock::now();
    expect_finished_by_next_build();
    const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begin);
    const char* wanted = std::getenv("LUMENFOLD_KILLS");
    std::mt19937 random(std::random_device{}());
    std::uniform_int_distribution<long> moment(0, whole.count());
    for (int i = 0; i < (wanted ? std::atoi(wanted) : 6); ++i) {
        const std::chrono::microseconds after(moment(random));
        SCOPED_TRACE("killed after " + std::to_string(after.count()) + " microseconds");
        start_over();
        RunningProgram build(command());
        std::this_thread::sleep_for(after);
        build.end(SIGKILL);
        expect_whole_pages();
        expect_finished_by_next_build();
        if (HasFailure())
            break;
    }
}

TEST_F(Killed, ByASignalABuildTidiesUp) {
    for (const int signal : {SIGINT, SIGTERM}) {
        start_over();
        RunningProgram build(command());
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        const int code = build.end(signal);
        EXPECT_TRUE(code == -signal || code == 0) << code;
        for (const auto& [name, bytes] : file_tree(*dir_ / "site"))
            EXPECT_TRUE(name.find("lumenfold-building") == std::string::npos &&
                        name.find("lumenfold-new") == std::string::npos)
                << name;
        expect_finished_by_next_build();
    }
}

TEST_F(Killed, BuildsOfOneSiteDoNotMeet) {
    for (int round = 0; round < 3; ++round) {
        start_over();
        RunningProgram first(command());
        RunningProgram second(command());
        const int codes = first.wait() + second.wait();
        EXPECT_TRUE(codes == 0 || codes == 1) << codes;
        expect_finished_by_next_build();
    }
}

} // namespace
