#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <regex>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace {

using TestSupport::read_file;
using TestSupport::TempDir;
using Environment = std::map<std::string, std::string>;

struct Outcome {
    int exit_code = -1;
    std::string errors;
};

std::string quoted(const std::string& text) {
    return "'" + text + "'";
}

/// Runs the program offscreen with a home of its own and waits for its end.
Outcome run_program(const TempDir& home, const Environment& environment,
                    const std::vector<std::string>& arguments = {},
                    const std::string& program = PROGRAM) {
    std::string command = "cd " + quoted(home.path().string()) + " && env -u LUMENFOLD_DEV_OPEN";
    const Environment fixed{{"HOME", home.path().string()},
                            {"XDG_CONFIG_HOME", (home / "config").string()},
                            {"XDG_RUNTIME_DIR", home.path().string()},
                            {"QT_QPA_PLATFORM", "offscreen"},
                            {"LSAN_OPTIONS", "print_suppressions=0:suppressions=" SOURCE_ROOT
                                             "/tests/support/leaks.supp"}};
    for (const Environment& variables : {fixed, environment})
        for (const auto& [name, value] : variables)
            command += " " + name + "=" + quoted(value);
    command += " timeout 60 " + quoted(program);
    for (const std::string& argument : arguments)
        command += " " + quoted(argument);
    const std::filesystem::path errors = home / "errors.txt";
    const int status = std::system((command + " 2>" + quoted(errors.string())).c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read_file(errors)};
}

/// Width and height from the header chunk of a PNG file (ISO/IEC 15948).
std::pair<std::uint32_t, std::uint32_t> png_size(const std::filesystem::path& path) {
    const std::string bytes = read_file(path);
    if (bytes.size() < 24 || bytes.substr(1, 3) != "PNG")
        return {0, 0};
    const auto number = [&](std::size_t at) {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
        return value;
    };
    return {number(16), number(20)};
}

TEST(Program, ATypedTitleIsTheOnlyChangeOfTheFile) {
    TempDir folder;
    std::filesystem::copy(SOURCE_ROOT "/examples/tidewater", folder / "site",
                          std::filesystem::copy_options::recursive);
    const std::filesystem::path config = folder / "site/.lumenfold-site";
    const std::string before = read_file(config);
    const Outcome outcome = run_program(folder,
                                        {{"CORVEL_SHOT", (folder / "one.png").string()},
                                         {"CORVEL_SHOT2", (folder / "two.png").string()},
                                         {"CORVEL_CLICK", "Site Form/Title Field=Harbour Notes"},
                                         {"CORVEL_SHOT2_DELAY", "1500"}},
                                        {config.string()});
    EXPECT_EQ(outcome.exit_code, 0) << outcome.errors;
    EXPECT_EQ(png_size(folder / "one.png"), std::pair(1000u, 700u));
    EXPECT_EQ(png_size(folder / "two.png"), std::pair(1000u, 700u));
    EXPECT_EQ(read_file(config), std::regex_replace(before, std::regex("\n  \"title\": [^\n]*"),
                                                    "\n  \"title\": \"Harbour Notes\","));
}

TEST(Program, TellsWhatItCannotOpenAndOpensTheRest) {
    TempDir folder;
    std::filesystem::copy(SOURCE_ROOT "/examples/tidewater", folder / "site",
                          std::filesystem::copy_options::recursive);
    const std::string site = (folder / "site/.lumenfold-site").string();
    const auto started = [&](const std::string& shot, std::vector<std::string> arguments) {
        arguments.push_back(site);
        const Outcome outcome =
            run_program(folder, {{"CORVEL_SHOT", (folder / shot).string()}}, arguments);
        EXPECT_EQ(outcome.exit_code, 0);
        return outcome.errors;
    };
    EXPECT_NE(started("told.png", {"nowhere.txt"})
                  .find("lumenfold: nowhere.txt: No such file or directory\n"),
              std::string::npos);
    EXPECT_EQ(started("plain.png", {}).find("lumenfold:"), std::string::npos);
    EXPECT_EQ(started("skipped.png", {"--unknown", "", folder.path().string()}).find("lumenfold:"),
              std::string::npos);
    EXPECT_EQ(read_file(folder / "plain.png"), read_file(folder / "skipped.png"));
    EXPECT_NE(read_file(folder / "plain.png"), read_file(folder / "told.png")); // a dialog
    EXPECT_EQ(run_program(folder, {{"DISPLAY", ":none"}, {"QT_QPA_PLATFORM", "xcb"}}, {"--help"})
                  .exit_code,
              0);
}

TEST(Program, ACommaLocaleChangesNothing) {
    TempDir folder;
    const std::string locale = (folder / "de_DE.UTF-8").string();
    if (std::system(("localedef -i de_DE -f UTF-8 " + quoted(locale) + " 2>/dev/null").c_str()))
        GTEST_SKIP() << "no locale could be made";
    for (const std::string language : {"C.UTF-8", "de_DE.UTF-8"})
        EXPECT_EQ(run_program(folder, {{"LOCPATH", folder.path().string()},
                                       {"LC_ALL", language},
                                       {"CORVEL_SHOT", (folder / (language + ".png")).string()}})
                      .exit_code,
                  0);
    EXPECT_FALSE(read_file(folder / "C.UTF-8.png").empty());
    EXPECT_EQ(read_file(folder / "C.UTF-8.png"), read_file(folder / "de_DE.UTF-8.png"));
}

TEST(Program, StartsSmallAndWithoutMediaPlugIns) {
    TempDir folder;
    const std::string shot = (folder / "small.png").string();
    EXPECT_EQ(run_program(folder, {{"CORVEL_SHOT", shot},
                                   {"CORVEL_WIDTH", "200"},
                                   {"CORVEL_HEIGHT", "180"},
                                   {"GST_PLUGIN_SYSTEM_PATH_1_0", folder.path().string()},
                                   {"GST_REGISTRY", (folder / "registry").string()}})
                  .exit_code,
              0);
    EXPECT_EQ(png_size(shot), std::pair(200u, 180u));
}

TEST(Program, InstalledAssetsWithoutAThemeEndTheStart) {
    TempDir folder;
    std::filesystem::copy(PROGRAM, folder / "lumenfold");
    for (const std::string content : {"", "{ not a theme"}) {
        TestSupport::write_file(folder / "assets/corvel/themes/broken.json", content);
        std::filesystem::create_directories(folder / "assets/corvel/styles");
        const Outcome outcome = run_program(folder, {}, {}, (folder / "lumenfold").string());
        EXPECT_EQ(outcome.exit_code, 1);
        EXPECT_NE(outcome.errors.find("Corvel: failed to initialize (themes/styles/theme).\n"),
                  std::string::npos)
            << outcome.errors;
    }
}

// As root every folder can be read, so the fault is a link that leads to itself. Styles that cannot
// be read are left out and told; without themes there is nothing to show.
TEST(Program, AssetsThatCannotBeReadEndTheStartWithASentence) {
    for (const char* folder_name : {"themes"}) {
        TempDir folder;
        std::filesystem::copy(PROGRAM, folder / "lumenfold");
        std::filesystem::create_directories(folder / "assets/corvel");
        std::filesystem::copy(SOURCE_ROOT "/ext/corvel/styles", folder / "assets/corvel/styles",
                              std::filesystem::copy_options::recursive);
        const std::filesystem::path broken = folder / ("assets/corvel/" + std::string(folder_name));
        std::filesystem::remove_all(broken);
        std::filesystem::create_symlink(broken.filename(), broken);
        const Outcome outcome = run_program(folder, {}, {}, (folder / "lumenfold").string());
        EXPECT_EQ(outcome.exit_code, 1) << folder_name;
        EXPECT_NE(outcome.errors.find("Corvel: cannot read " + broken.string() + ": "),
                  std::string::npos)
            << outcome.errors;
    }
}

} // namespace
