#include "desktop/media/asset_paths.h"
#include "desktop/media/svg_tint.h"
#include "support/case_file.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <string>
#include <vector>

using namespace Corvel;
using TestSupport::write_file;

TEST(AssetPaths, TheFirstDirectoryThatHasAFileWins) {
    TestSupport::TempDir dir;
    const std::string one = (dir / "one").string();
    const std::string two = (dir / "two").string();
    write_file(one + "/home.svg", "<svg>one é</svg>");
    for (const char* name : {"/home.svg", "/app.png", "/app.svg"})
        write_file(two + name, "two");
    std::filesystem::create_directories(one + "/app.svg");
    std::filesystem::create_directories(one + "/app.png");
    set_icon_dirs({(dir / "missing").string(), one, two});
    set_media_dirs({one, two});

    EXPECT_EQ(load_icon_text("home").toStdString(), "<svg>one é</svg>");
    EXPECT_EQ(load_icon_text("app").toStdString(), "two") << "a folder is not an icon";
    EXPECT_TRUE(load_icon_text("nowhere").isEmpty());
    EXPECT_EQ(resolve_icon_path("app.png"), two + "/app.png");
    EXPECT_EQ(resolve_icon_path("app"), "") << "the name includes its extension here";
    const std::pair<std::string, std::string> media[] = {
        {"home.svg", one + "/home.svg"},
        {"app.png", two + "/app.png"},
        {two + "/home.svg", two + "/home.svg"},
        {two + "/nowhere.svg", ""},
        {two, ""},
        {"", ""},
    };
    for (const auto& [name, path] : media)
        EXPECT_EQ(resolve_media_path(name).toStdString(), path) << name;
}

namespace {

std::string repeated(const std::string& text) {
    std::string out;
    while (out.size() < 1 << 19)
        out += text;
    return out;
}

} // namespace

TEST(SvgTint, ShapesWithAnIdAndTheirGradientsTakeTheTint) {
    TestSupport::expect_cases("tests/desktop/media/cases/tint.txt", [](const std::string& svg) {
        EXPECT_EQ(recolor_svg(svg, "").toStdString(), svg) << "without a tint";
        const std::string tinted = recolor_svg(svg, "red").toStdString();
        return tinted == svg ? "unchanged\n" : tinted;
    });
}

TEST(SvgTint, HostileDocumentsTakeNoTime) {
    const std::string user = R"x(<path id="a" fill="url(#g)"/>)x"; // so that gradients count
    const std::string end = "</linearGradient>";
    const std::vector<std::string> documents = {
        repeated("<linearGradient "),
        repeated("<linearGradient id ") + ">" + end,
        repeated("<linearGradient id=\"") + ">" + end,
        end + repeated("<linearGradient id=\"x\"/>"),
        repeated("<path id=\"a\" fill=\"#000\""),
        repeated("<path id=\"a\" fill=\"#000\"/>"),
        "<path id=\"a\" " + repeated("url( fill=") + ">",
        "<path id" + repeated(" ") + ">",
        repeated("<!-- exclude=\""),
        "<!--" + repeated(" ") + "exclude" + repeated(" "),
    };
    for (const std::string& document : documents) {
        SCOPED_TRACE(document.substr(0, 40));
        QElapsedTimer timer;
        timer.start();
        recolor_svg(user + document, "red");
        EXPECT_LT(timer.elapsed(), 1000);
    }
}
