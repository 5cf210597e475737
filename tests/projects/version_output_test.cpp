#include "app/builds/porcelain.h"
#include "app/builds/version_inclusion.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

namespace Lumenfold {
namespace {

using TestSupport::TempDir;
using TestSupport::write_file;

TEST(VersionOutput, IsOnlyEverARealFolderDirectlyBelowVersions) {
    TempDir dir;
    const std::filesystem::path config = dir / "project/.lumenfold-project";
    write_file(dir / "project/versions/1.2/index.html", "");
    write_file(dir / "project/versions/1.2/deep/index.html", "");
    write_file(dir / "project/versions/file", "");
    write_file(dir / "precious/keep", "");
    std::filesystem::create_directory_symlink(dir / "precious", dir / "project/versions/link");

    EXPECT_EQ(version_output(config, "1.2"), dir / "project/versions/1.2");
    const std::string with_null("1.2\0x", 5);
    for (const std::string& name :
         {std::string(), std::string("."), std::string(".."), std::string("1.2/deep"),
          std::string("1.2/"), std::string("../versions/1.2"), std::string("1..2"),
          std::string("..\\precious"), std::string("a\\b"), with_null, std::string("link"),
          std::string("file"), std::string("9.9"), (dir / "precious").string()})
        EXPECT_EQ(version_output(config, name), std::nullopt) << name;
}

TEST(VersionOutput, AVersionsFolderThatIsALinkIsLeftAlone) {
    TempDir dir;
    write_file(dir / "elsewhere/1.2/index.html", "");
    std::filesystem::create_directory(dir / "project");
    std::filesystem::create_directory_symlink(dir / "elsewhere", dir / "project/versions");
    EXPECT_EQ(version_output(dir / "project/.lumenfold-project", "1.2"), std::nullopt);
}

TEST(Porcelain, ALineIsATagATabAndAText) {
    EXPECT_FALSE(parse_porcelain(""));
    EXPECT_FALSE(parse_porcelain("I"));
    EXPECT_FALSE(parse_porcelain("Info\tx"));
    EXPECT_EQ(parse_porcelain("I\t")->text, "");
    EXPECT_EQ(parse_porcelain("A\tb\tc")->text, "b\tc");
    EXPECT_EQ(parse_porcelain("\t\tx")->tag, '\t');
}

} // namespace
} // namespace Lumenfold
