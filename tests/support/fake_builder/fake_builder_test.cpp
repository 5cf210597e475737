#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/wait.h>

namespace {

using TestSupport::read_file;
using TestSupport::TempDir;
using TestSupport::write_file;

struct Outcome {
    std::string output; ///< of both streams
    int code = 0;       ///< minus the signal after a crash
};

Outcome run_builder(const std::string& arguments, const std::string& script = {}) {
    if (script.empty())
        ::unsetenv("LUMENFOLD_FAKE_BUILDER");
    else
        ::setenv("LUMENFOLD_FAKE_BUILDER", script.c_str(), 1);
    const std::string command =
        "exec '" + std::string(FAKE_BUILDER_DIR) + "/lumenfold-cli' " + arguments + " 2>&1";
    std::FILE* pipe = ::popen(command.c_str(), "r");
    Outcome outcome;
    std::array<char, 4096> block;
    while (const std::size_t size = std::fread(block.data(), 1, block.size(), pipe))
        outcome.output.append(block.data(), size);
    const int status = ::pclose(pipe);
    outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return outcome;
}

TEST(FakeBuilder, PlaysItsScripts) {
    struct Case {
        const char* steps;
        std::string output;
        int code;
    };
    const Case cases[] = {
        {R"([])", "", 0},
        {R"(["I\tone", "A\ttwo", "E\tthree", "O\t/out", "R\ta\tb\tc\td\t1", "plain", ""])",
         "I\tone\nA\ttwo\nE\tthree\nO\t/out\nR\ta\tb\tc\td\t1\nplain\n\n", 0},
        {R"([{"line": "x", "end": "\r\n"}, {"line": "y", "end": ""}, {"bytes": [0, 255, 10]}])",
         std::string("x\r\ny\0\xff\n", 7), 0},
        {R"(["before", {"error": "noise"}, "after", {"exit": 3}, "never"])",
         "before\nnoise\nafter\n", 3},
        {R"(["before", {"signal": 9}, "never"])", "before\n", -SIGKILL},
    };
    for (const Case& c : cases)
        for (const char* command : {"site build", "build", "versions"}) {
            SCOPED_TRACE(std::string(command) + ": " + c.steps);
            const Outcome outcome =
                run_builder(std::string(command) + " none --porcelain",
                            "{\"" + std::string(command) + "\": " + c.steps + "}");
            EXPECT_EQ(outcome.output, c.output);
            EXPECT_EQ(outcome.code, c.code);
        }
}

TEST(FakeBuilder, IsFastAndSlowAsAsked) {
    const Outcome many = run_builder("build none --porcelain",
                                     R"({"build": [{"line": "I\tagain", "times": 100000}]})");
    EXPECT_EQ(std::count(many.output.begin(), many.output.end(), '\n'), 100000);
    const auto start = std::chrono::steady_clock::now();
    run_builder("build none --porcelain", R"({"build": [{"wait": 50}]})");
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
}

TEST(FakeBuilder, TakesScriptsFromTheConfiguration) {
    const TempDir dir;
    const std::string config = (dir / "config").string();
    write_file(config, R"({"fake_builder": {"build": ["I\tfrom the file", {"exit": 4}]}})");
    const Outcome outcome = run_builder("build " + config + " --porcelain");
    EXPECT_EQ(outcome.output, "I\tfrom the file\n");
    EXPECT_EQ(outcome.code, 4);
    EXPECT_EQ(run_builder("versions " + config + " --porcelain").output, "") << "no script for it";
    EXPECT_EQ(run_builder("build " + config + " --porcelain", R"({"build": ["I\tfirst"]})").output,
              "I\tfirst\n");
}

TEST(FakeBuilder, PretendsToBuildWithoutAScript) {
    const TempDir dir;
    const std::string root = dir.path().string();
    const std::string project = root + "/.lumenfold-project";
    write_file(project, R"({"name": "P", "versions": [{"label": "1.1", "release_date": "D"},
                            {"label": "1.0"}], "versions_excluded": ["0.9"]})");
    const std::string excluded = "R\t0.9\t0.9.0\t\texcluded\t0\n";
    EXPECT_EQ(run_builder("versions " + project + " --porcelain").output,
              "R\t1.1\t1.1.0\tD\tpending\t1\nR\t1.0\t1.0.0\t\tpending\t1\n" + excluded);
    EXPECT_EQ(run_builder("build " + project + " --porcelain").output,
              "I\tBuilding P 1.1\nA\tInto " + root + "/versions/1.1\n" +
                  "I\tBuilding P 1.0\nA\tInto " + root + "/versions/1.0\n");
    EXPECT_EQ(run_builder("versions " + project + " --porcelain").output,
              "R\t1.1\t1.1.0\tD\tcomplete\t1\nR\t1.0\t1.0.0\t\tcomplete\t1\n" + excluded);

    const std::string site = root + "/.lumenfold-site";
    write_file(site, R"({"title": "S", "output": "./out", "projects": [{"config": "p"}]})");
    EXPECT_EQ(run_builder("site build " + site + " --porcelain").output,
              "I\tBuilding S\nA\tReading p\nO\t" + root + "/out\n");
    EXPECT_TRUE(std::filesystem::is_directory(root + "/out"));
}

TEST(FakeBuilder, FailsWithACode) {
    const Outcome unread = run_builder("site build /no/such/file --porcelain");
    EXPECT_EQ(unread.output, "E\tCannot read /no/such/file\n");
    EXPECT_EQ(unread.code, 1);
    const Outcome script = run_builder("build none --porcelain", R"({"build": [{"line": 5}]})");
    EXPECT_TRUE(script.output.starts_with("bad script: ")) << script.output;
    EXPECT_EQ(script.code, 2);
    for (const char* arguments :
         {"", "build", "build x", "site x --porcelain", "build x --porcelain y", "--porcelain"})
        EXPECT_EQ(run_builder(arguments).code, 2) << arguments;
}

} // namespace
