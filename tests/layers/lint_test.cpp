#include "support/case_file.h"

#include <cstdio>

namespace {

using TestSupport::TempDir;
using TestSupport::write_file;

struct LintRun {
    int status = -1;
    std::string output;
};

/// Runs the lint program in `folder`; file names in its output are relative to it.
LintRun run_lint(const TempDir& folder, const std::string& arguments) {
    const std::string command =
        "cd '" + folder.path().string() + "' && '" CORVEL_LINT "' " + arguments + " 2>&1";
    FILE* const pipe = popen(command.c_str(), "r");
    LintRun run;
    for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe))
        run.output += static_cast<char>(byte);
    run.status = WEXITSTATUS(pclose(pipe));
    return run;
}

std::string findings(const std::string& style) {
    const TempDir dir;
    write_file(dir / "w/prototypes.lyr",
               "Text:\n  Wrap: 1\nIcon:\n  Source: \"\"\nButton:\n  Caption: \"\"\n"
               "  Fill: Theme/Primary\n  Label << Corvel/Text:\n    Text: Caption\n");
    write_file(dir / "m/theme.lyr", "Theme:\n  Primary: \"#000000\"\nTokens:\n  S: 1\n"
                                    "  Unused: 2\nBase:\n  Size.Width: Tokens/S\n");
    write_file(dir / "s/app.lyr", style);
    write_file(dir / "i/there.svg", "<svg/>");
    const LintRun run = run_lint(dir, "--widgets w --mounts m --styles s --icons i");
    EXPECT_EQ(run.status, run.output.empty() ? 0 : 1);
    return run.output;
}

TEST(Lint, NamesEachProblemOfAStyleWithItsPlace) {
    TestSupport::expect_cases("tests/layers/cases/lint.txt", findings);
}

TEST(Lint, ThemesMustParseAndHaveEqualKeys) {
    const TempDir dir;
    write_file(dir / "t/a.json", R"({"A": {"Primary": "#000000", "Secondary": "#111111"}})");
    write_file(dir / "t/b.json", R"({"A": {"Primary": 5, "Gradient": ["0:#0", "1:#1"]}})");
    write_file(dir / "t/c.json", "{");
    const LintRun run = run_lint(dir, "--themes t");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "t/a.json:1: no `Gradient.End Color`, which other themes have\n"
                          "t/a.json:1: no `Gradient.End`, which other themes have\n"
                          "t/a.json:1: no `Gradient.Start Color`, which other themes have\n"
                          "t/a.json:1: no `Gradient.Start`, which other themes have\n"
                          "t/b.json:1: `Primary` has a value of another kind\n"
                          "t/b.json:1: no `Secondary`, which other themes have\n"
                          "t/b.json:1: the theme `A` is also in t/a.json\n"
                          "t/c.json:1: no theme: the file does not parse or is empty\n");
}

TEST(Lint, CommandLineIsExplained) {
    const TempDir dir;
    EXPECT_EQ(run_lint(dir, "--help").status, 0);
    EXPECT_EQ(run_lint(dir, "--styles missing").output,
              "corvel_lint: missing is no folder; see --help\n");
    EXPECT_EQ(run_lint(dir, "--icons").output, "corvel_lint: --icons needs a folder; see --help\n");
    EXPECT_EQ(run_lint(dir, "-x").status, 2);
}

} // namespace
