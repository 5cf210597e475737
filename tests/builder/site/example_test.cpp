#include "builder/site/made_site.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using TestSupport::read_file;
using TestSupport::TempDir;

/// Runs a shell script in the folder and gives back what it prints, errors included.
std::string output_of(const std::filesystem::path& folder, const std::string& script) {
    const std::string said = (folder / "said").string();
    const int code =
        std::system(("cd '" + folder.string() + "'\nexec >'" + said + "' 2>&1\n" + script).c_str());
    EXPECT_EQ(code, 0) << script << read_file(said);
    return read_file(said);
}

/// A copy of the example site with its histories, in which some versions are built.
std::string make_example(const std::filesystem::path& folder) {
    return output_of(folder,
                     "cp -R '" SOURCE_ROOT "/examples/tidewater' site\n"
                     "'" SOURCE_ROOT "/scripts/example-history' site '" LUMENFOLD_CLI "'\n");
}

std::string status_words(const std::filesystem::path& folder, const std::string& project) {
    return output_of(folder, "'" LUMENFOLD_CLI "' versions site/projects/" + project +
                                 "/.lumenfold-project --porcelain | cut -f 2,5\n");
}

/// The lines that tell of a mistake.
std::string complaints_of(const std::filesystem::path& folder, const std::string& command) {
    return output_of(folder, "'" LUMENFOLD_CLI "' " + command +
                                 " --porcelain >lines || echo failed\ngrep '^E' lines || true\n");
}

/// The road of somebody who follows the README: a first look, a first version, the whole site.
void follow_the_readme(const std::filesystem::path& folder) {
    EXPECT_EQ(make_example(folder), "");
    EXPECT_EQ(status_words(folder, "gauge-core"),
              "3.3\tnew\n3.2\tpending\n3.1\tcomplete\n3.0\tcomplete\n2.9\texcluded\n2.8\tno-tag\n");
    EXPECT_EQ(complaints_of(folder, "site build site/.lumenfold-site"), "");
    EXPECT_EQ(complaints_of(folder, "build site/projects/gauge-core/.lumenfold-project"), "");
    EXPECT_EQ(
        status_words(folder, "gauge-core"),
        "3.3\tnew\n3.2\tcomplete\n3.1\tcomplete\n3.0\tcomplete\n2.9\texcluded\n2.8\tno-tag\n");
    EXPECT_EQ(complaints_of(folder, "site build --pending site/.lumenfold-site"), "");
    EXPECT_EQ(complaints_of(folder, "site check site/.lumenfold-site"), "");
}

/// The whole site at once, on one processor and by somebody whose git is told much else.
void build_elsewhere(const std::filesystem::path& folder) {
    TestSupport::write_file(folder / "home/.gitconfig",
                            "[commit]\ngpgSign = true\n[core]\nautocrlf = true\n");
    TestSupport::write_file(folder / "home/.config/git/ignore", "*.md\n");
    output_of(folder, "export HOME=$PWD/home TZ=Asia/Tokyo LANG=tr_TR.UTF-8\n"
                      "unset XDG_CONFIG_HOME\n"
                      "cp -R '" SOURCE_ROOT "/examples/tidewater' site\n"
                      "'" SOURCE_ROOT "/scripts/example-history' site\n"
                      "taskset 1 '" LUMENFOLD_CLI "' site build --pending --quiet "
                      "site/.lumenfold-site\n");
}

TEST(Example, IsBuiltWithoutAMistakeAndTheSameEverywhere) {
    const TempDir folder;
    follow_the_readme(folder.path());
    const TestSupport::MadeSite site(folder / "site/output");
    EXPECT_GT(site.page_count(), 90U);
    for (const std::string& problem : site.problems())
        ADD_FAILURE() << problem;

    const TempDir other;
    build_elsewhere(other.path());
    EXPECT_EQ(output_of(folder.path(), "diff -r -x .lumenfold-output -x .lumenfold-notes '" +
                                           (other / "site/output").string() + "' site/output\n"),
              "");
}

/// As somebody finds it who was given the sources without their history.
TEST(Manual, IsBuiltWithoutAComplaint) {
    const TempDir folder;
    const std::string said = output_of(
        folder.path(), "mkdir copy\ncd '" SOURCE_ROOT "'\n"
                       "cp -R .lumenfold *.md docs '" +
                           (folder / "copy").string() +
                           "'\ncd - >/dev/null\n'" LUMENFOLD_CLI
                           "' site build copy/docs --output made --strict --porcelain >lines || "
                           "echo failed\ngrep '^[EA]' lines || true\n");
    EXPECT_EQ(said, "");
    const TestSupport::MadeSite site(folder / "made");
    for (const std::string& problem : site.problems())
        ADD_FAILURE() << problem;
    for (const auto& entry : std::filesystem::directory_iterator(SOURCE_ROOT "/docs"))
        if (entry.path().extension() == ".md") {
            EXPECT_NE(read_file(SOURCE_ROOT "/.lumenfold").find(entry.path().filename().string()),
                      std::string::npos)
                << entry.path() << " is no topic of the manual";
        }
}

} // namespace
