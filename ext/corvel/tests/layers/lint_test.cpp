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

// What each message says is shown, and checked, page by page in the application's docs; here is
// what several files have to do with each other.
TEST(Lint, NamesTheProblemsOfAllFoldersByPlace) {
    const TempDir dir;
    write_file(dir / "w/text.lyr", "Text:\n  Wrap: 1\n  Colour: \"\"\n  Text Color: Colour\n");
    write_file(dir / "m/theme.lyr", "Theme:\n  Primary: \"#000000\"\n");
    write_file(dir / "s/a.lyr", "App:\n  Title << Corvel/Txt:\n    Colour: Theme/Primary\n");
    write_file(dir / "s/b.lyr", "App/Title/Wrap: 1 2\n");
    write_file(dir / "t/a.json", R"({"A": {"Primary": "#000000", "Secondary": "#111111"}})");
    write_file(dir / "t/b.json", R"({"A": {"Primary": "#000000"}})");
    const LintRun run = run_lint(dir, "--widgets w --mounts m --styles s --themes t");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, R"(s/a.lyr:2:12: no layer `Corvel/Txt` for `App/Title` to inherit from
  2 |   Title << Corvel/Txt:
    |            ^^^^^^^^^^
  did you mean `Corvel/Text`?
s/b.lyr:1:19: Found unexpected `2`; expected a line end after attribute.
  1 | App/Title/Wrap: 1 2
    |                   ^
  a value is one number, one text or one link, no unit
t/b.json:1:3: no `Secondary`, which other themes have
  1 | {"A": {"Primary": "#000000"}}
    |   ^
  without it the theme shows a default
t/b.json:1:3: the theme `A` is also in t/a.json
  1 | {"A": {"Primary": "#000000"}}
    |   ^
  give one of them another name, publisher or uuid
)");
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
