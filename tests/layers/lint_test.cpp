#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <sstream>
#include <vector>

namespace {

using TestSupport::TempDir;
using TestSupport::write_file;

struct LintRun {
    int status = -1;
    std::vector<std::string> lines;
};

/// Runs the lint program in `folder`; file names in its output are relative to it.
LintRun run_lint(const std::filesystem::path& folder, const std::string& arguments) {
    const std::string command =
        "cd '" + folder.string() + "' && '" CORVEL_LINT "' " + arguments + " 2>&1";
    FILE* const pipe = popen(command.c_str(), "r");
    std::string output;
    std::array<char, 4096> buffer{};
    while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), pipe))
        output.append(buffer.data(), size);
    LintRun run;
    run.status = WEXITSTATUS(pclose(pipe));
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);)
        run.lines.push_back(line);
    return run;
}

const std::string prototypes = "Text:\n  Wrap: 1\nIcon:\n  Source: \"\"\nButton:\n"
                               "  Caption: \"\"\n  Fill: Theme/Primary\n  Label << Corvel/Text:\n"
                               "    Text: Caption\n";
const std::string mounts = "Theme:\n  Primary: \"#000000\"\nTokens:\n  S: 1\n  Unused: 2\n"
                           "Base:\n  Size.Width: Tokens/S\n";

struct LintCase {
    const char* name;
    std::string style;
    std::vector<std::string> findings;
};

void PrintTo(const LintCase& c, std::ostream* out) {
    *out << c.name;
}

class LintTest : public testing::TestWithParam<LintCase> {};

TEST_P(LintTest, NamesEachProblemWithItsPlace) {
    const TempDir dir;
    write_file(dir / "w/prototypes.lyr", prototypes);
    write_file(dir / "m/theme.lyr", mounts);
    write_file(dir / "s/app.lyr", GetParam().style);
    write_file(dir / "i/there.svg", "<svg/>");
    const LintRun run = run_lint(dir.path(), "--widgets w --mounts m --styles s --icons i");
    EXPECT_EQ(run.lines, GetParam().findings);
    EXPECT_EQ(run.status, GetParam().findings.empty() ? 0 : 1);
}

const LintCase lint_cases[] = {
    {"Clean",
     "App:\n  Win:\n    OK << Corvel/Button:\n      Caption: \"OK\"\n      Size.Width: Tokens/S\n"
     "      Label << Corvel/Button/Label:\n        Text Color: \"#80ffffff\" @On: \"red\"\n"
     "    Mark << Corvel/Icon:\n      Source: \"there\"\n"
     "      Bind: \"State:On:done; Field:icon;Opacity:x\"\n    Rows:\n      Bind: \"List:rows\"\n",
     {}},
    {"Syntax",
     "App:\n  Wrap: 1 2\n  Text: ,\n",
     {"s/app.lyr:2: Found unexpected `2`; expected a line end after attribute.",
      "s/app.lyr:3: Found `,` where expression was expected."}},
    {"LexicalErrorsOnly", "App: ?\n", {"s/app.lyr:1: Found unexpected character '?'"}},
    {"Values",
     "App:\n  Fill: #123\n  Wrap: false\n  Opacity: \"1\" @S: true\n  Text: 5\n  Tint: 1\n"
     "  Text Color: \"#12345\"\n  @S:\n    Visible: true\n",
     {"s/app.lyr:2: colour literal for `Fill`; write a quoted colour, or link to one of the "
      "theme's",
      "s/app.lyr:3: `Wrap` is a flag; write 0 or 1", "s/app.lyr:4: `Opacity` reads a number",
      "s/app.lyr:5: `Text` reads a text",
      "s/app.lyr:6: `Tint` is no attribute of the framework, and no link leads to one of this name",
      "s/app.lyr:7: `#12345` is no colour; write six digits, or eight with the opacity first",
      "s/app.lyr:9: `Visible` is a flag; write 0 or 1"}},
    {"Links",
     "Theme:\n  Accent: \"#ff0000\"\nApp:\n  Fill: Theme/Accent\n  Text: Theme/Primry\n"
     "  Size.(Width, Height): Tokens/XS @S: Opacity\n  Tag: Tag\n",
     {"s/app.lyr:4: link `Theme/Accent` of attribute `App/Fill` names nothing that a theme can set",
      "s/app.lyr:5: link `Theme/Primry` of attribute `App/Text` leads nowhere",
      "s/app.lyr:6: link `Opacity` of attribute `App/Size.Height.S` leads nowhere",
      "s/app.lyr:6: link `Opacity` of attribute `App/Size.Width.S` leads nowhere",
      "s/app.lyr:6: link `Tokens/XS` of attribute `App/Size.Height` leads nowhere",
      "s/app.lyr:6: link `Tokens/XS` of attribute `App/Size.Width` leads nowhere",
      "s/app.lyr:7: cyclic link `Tag` of attribute `App/Tag`"}},
    {"Inheritance",
     "App:\n  A << Corvel/Buton\n  B << Corvel/Button:\n    Label:\n      Font.Size: 9\n"
     "Tokens:\n  C << Corvel/Text\nNew/D << App/B\n",
     {"s/app.lyr:2: no layer `Corvel/Buton` for `App/A` to inherit from",
      "s/app.lyr:4: `App/B/Label` loses the kind of `Corvel/Button/Label`; repeat where it comes "
      "from with <<",
      "s/app.lyr:7: `Tokens/C` inherits nothing from `Corvel/Text`: `Tokens` was complete before "
      "this folder was loaded"}},
    {"Binds",
     "App:\n  Bind: \"Feld:x\"\n  A:\n    Bind: \"State:Only; Field:\"\n  B:\n    Bind: \"List:\"\n"
     "  C:\n    Bind: \"Field:x;ThemeList\"\n",
     {"s/app.lyr:2: Bind piece `Feld:x` has no known form",
      "s/app.lyr:4: Bind piece `Field:` names no field",
      "s/app.lyr:4: Bind piece `State:Only` has no known form",
      "s/app.lyr:6: Bind `List:` names no list",
      "s/app.lyr:8: Bind piece `ThemeList` must stand alone"}},
    {"Icons",
     "App:\n  A << Corvel/Icon:\n    Source: Mark @S: \"gone\"\n    Mark: \"lost\"\n"
     "  B << Corvel/Text:\n    Source: \"no icon of a text\"\n",
     {"s/app.lyr:3: no icon `gone`", "s/app.lyr:4: no icon `lost`"}},
};

INSTANTIATE_TEST_SUITE_P(All, LintTest, testing::ValuesIn(lint_cases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(LintThemes, MustParseAndHaveEqualKeys) {
    const TempDir dir;
    write_file(dir / "t/a.json", R"({"A": {"Primary": "#000000", "Secondary": "#111111"}})");
    write_file(dir / "t/b.json", R"({"A": {"Primary": 5, "Gradient": ["0:#0", "1:#1"]}})");
    write_file(dir / "t/c.json", "{");
    const LintRun run = run_lint(dir.path(), "--themes t");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.lines, (std::vector<std::string>{
                             "t/a.json:1: no `Gradient.End Color`, which other themes have",
                             "t/a.json:1: no `Gradient.End`, which other themes have",
                             "t/a.json:1: no `Gradient.Start Color`, which other themes have",
                             "t/a.json:1: no `Gradient.Start`, which other themes have",
                             "t/b.json:1: `Primary` has a value of another kind",
                             "t/b.json:1: no `Secondary`, which other themes have",
                             "t/b.json:1: the theme `A` is also in t/a.json",
                             "t/c.json:1: no theme: the file does not parse or is empty"}));
}

TEST(LintCommandLine, IsExplained) {
    const TempDir dir;
    EXPECT_EQ(run_lint(dir.path(), "--help").status, 0);
    EXPECT_EQ(run_lint(dir.path(), "--styles missing").lines,
              std::vector<std::string>{"corvel_lint: missing is no folder; see --help"});
    EXPECT_EQ(run_lint(dir.path(), "--icons").lines,
              std::vector<std::string>{"corvel_lint: --icons needs a folder; see --help"});
    EXPECT_EQ(run_lint(dir.path(), "-x").status, 2);
}

} // namespace
