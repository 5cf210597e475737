#include "desktop/media/asset_paths.h"
#include "desktop/media/svg_tint.h"
#include "support/temp_dir.h"

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

struct Case {
    const char* what;
    std::string before;
    std::string after; ///< empty: unchanged
};

void expect_tinted(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const QString before = QString::fromStdString(c.before);
        EXPECT_EQ(recolor_svg(before, "red").toStdString(), c.after.empty() ? c.before : c.after);
        EXPECT_EQ(recolor_svg(before, "").toStdString(), c.before) << "without a tint";
    }
}

std::string repeated(const std::string& text) {
    std::string out;
    while (out.size() < 1 << 19)
        out += text;
    return out;
}

const std::string user = R"x(<path id="a" fill="url(#g)"/>)x"; ///< of the gradient "g"
const std::string open = R"x(<linearGradient id="g">)x";
const std::string stops =
    R"x(<stop stop-color="#000"/><stop style="stop-color:#fff; stop-opacity:.5"/></linearGradient>)x";
const std::string painted =
    R"x(<stop stop-color="red"/><stop style="stop-color:red; stop-opacity:.5"/></linearGradient>)x";
const std::string exclude_a = R"x(<!-- exclude="a" -->)x";

} // namespace

TEST(SvgTint, ShapesWithAnIdAndAFillTakeTheTint) {
    expect_tinted({
        {"no id", R"x(<path d="M0 0" fill="#000"/>)x", ""},
        {"each shape",
         R"x(<path id="p" fill="#000"/><circle id="a" fill="x"/><rect fill="y" id="b"/><ellipse id="c" fill=""/>)x",
         R"x(<path id="p" fill="red"/><circle id="a" fill="red"/><rect fill="red" id="b"/><ellipse id="c" fill="red"/>)x"},
        {"blanks in the attributes", "<path id = \"a\"\n fill\t=  \"#000\" d=\"\">",
         "<path id = \"a\"\n fill=\"red\" d=\"\">"},
        {"other shapes", R"x(<polygon id="a" fill="#000"/><line id="b" fill="#000"/>)x", ""},
        {"a tag that only begins like a shape", R"x(<rectangle id="a" fill="#000"/>)x", ""},
        {"fill none", R"x(<path id="a" fill="none"/>)x", ""},
        {"empty id", R"x(<path id="" fill="#000"/>)x", ""},
        {"an id at the end of another name counts", R"x(<path grid="a" fill="#000"/>)x",
         R"x(<path grid="a" fill="red"/>)x"},
        {"only the first fill", R"x(<path id="a" fill="#000" data-fill="#111"/>)x",
         R"x(<path id="a" fill="red" data-fill="#111"/>)x"},
        {"fill in single quotes", R"x(<path id="a" fill='#000'/>)x", ""},
        {"fill of the group", R"x(<g fill="#000"><path id="a"/></g>)x", ""},
        {"fill in a style", R"x(<path id="a" style="fill:#000"/>)x", ""},
        {"excluded, two blanks, comment behind the shapes",
         R"x(<path id="a" fill="x"/><path id="b" fill="x"/><path id="c" fill="x"/><!-- exclude="a  b" -->)x",
         R"x(<path id="a" fill="x"/><path id="b" fill="x"/><path id="c" fill="red"/><!-- exclude="a  b" -->)x"},
        {"unclosed tag", R"x(<path id="a" fill="#000")x", ""},
        {"not svg at all", "just <text> with \xC3\xA9 and > signs", ""},
    });
}

TEST(SvgTint, GradientsThatFillATintedShapeTakeOneColour) {
    const std::string in_style = R"x(<path id="b" style="fill: url( #g )"/>)x";
    const std::string unclosed =
        R"x(<linearGradient id="f"/><radialGradient id="g"><stop stop-color='x'/></radialGradient>)x";
    expect_tinted({
        {"used", user + open + stops, user + open + painted},
        {"defined before, used in a style", open + stops + in_style, open + painted + in_style},
        {"unused", user + R"x(<linearGradient id="h">)x" + stops, ""},
        {"used by a shape without id", R"x(<path fill="url(#g)"/>)x" + open + stops, ""},
        {"used by an excluded shape", exclude_a + user + open + stops, ""},
        {"used by an excluded and by a tinted one", exclude_a + user + in_style + open + stops,
         exclude_a + user + in_style + open + painted},
        {"an element runs to the next end tag of either kind", user + unclosed + stops, ""},
        {"a gradient without an id before it",
         user + "<linearGradient></linearGradient>" + open + stops,
         user + "<linearGradient></linearGradient>" + open + painted},
    });
}

TEST(SvgTint, HostileDocumentsTakeNoTime) {
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
        recolor_svg(QString::fromStdString(user + document), "red");
        EXPECT_LT(timer.elapsed(), 1000);
    }
}
