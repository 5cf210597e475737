#include "desktop/media/asset_paths.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

using namespace Corvel;
using TestSupport::TempDir;
using TestSupport::write_file;

TEST(AssetPaths, TheFirstDirectoryThatHasAFileWins) {
    TempDir dir;
    write_file(dir / "one/home.svg", "<svg>one é</svg>");
    write_file(dir / "two/home.svg", "<svg>two</svg>");
    write_file(dir / "two/app.png", "png");
    write_file(dir / "two/app.svg", "<svg/>");
    std::filesystem::create_directories(dir / "one/app.svg");
    std::filesystem::create_directories(dir / "one/app.png");
    const std::string one = (dir / "one").string();
    const std::string two = (dir / "two").string();
    set_icon_dirs({(dir / "missing").string(), one, two});
    set_media_dirs({one, two});

    EXPECT_EQ(load_icon_text("home").toStdString(), "<svg>one é</svg>");
    EXPECT_EQ(load_icon_text("app").toStdString(), "<svg/>") << "a folder is not an icon";
    EXPECT_TRUE(load_icon_text("nowhere").isEmpty());
    EXPECT_EQ(resolve_icon_path("app.png"), two + "/app.png");
    EXPECT_EQ(resolve_icon_path("app"), "") << "the name includes its extension here";
    EXPECT_EQ(resolve_media_path("home.svg").toStdString(), one + "/home.svg");
    EXPECT_EQ(resolve_media_path("app.png").toStdString(), two + "/app.png");
    EXPECT_EQ(resolve_media_path(two + "/home.svg").toStdString(), two + "/home.svg");
    EXPECT_TRUE(resolve_media_path(two + "/nowhere.svg").isEmpty());
    EXPECT_TRUE(resolve_media_path(two).isEmpty());
    EXPECT_TRUE(resolve_media_path("").isEmpty());
    set_icon_dirs({});
    set_media_dirs({});
    EXPECT_TRUE(load_icon_text("home").isEmpty());
}
