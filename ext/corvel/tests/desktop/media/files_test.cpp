#include "desktop/media/asset_paths.h"
#include "desktop/media/less_motion.h"
#include "desktop/media/svg_tint.h"
#include "support/case_file.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QRegularExpression>

#include <random>
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
        repeated("<linearGradient id=\"\" ") + end,
        repeated("<linearGradient id=\"f\"><stop stop-color=\"#000\"/>" + end),
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

// The walk leaves out what cannot match; the pattern on its own tries everything.
TEST(SvgTint, GradientsAreThoseThatThePatternFinds) {
    const QRegularExpression pattern(
        QStringLiteral(R"re(<(?:linear|radial)Gradient\b[^>]*\bid\s*=\s*"([^"]*)"[^>]*>)re"
                       R"re(.*?</(?:linear|radial)Gradient>)re"),
        QRegularExpression::DotMatchesEverythingOption);
    const std::vector<QLatin1String> pieces{QLatin1String("<linearGradient"),
                                            QLatin1String("<radialGradient "),
                                            QLatin1String(" id=\"g\""),
                                            QLatin1String(" id=\""),
                                            QLatin1String("\""),
                                            QLatin1String(">"),
                                            QLatin1String("/>"),
                                            QLatin1String("</linearGradient>"),
                                            QLatin1String("</radialGradient>"),
                                            QLatin1String("<stop stop-color=\"a\"/>"),
                                            QLatin1String(" "),
                                            QLatin1String("x")};
    std::mt19937 random(7);
    for (int round = 0; round < 20'000; ++round) {
        QString text;
        for (auto count = random() % 16; count > 0; --count)
            text += pieces[random() % pieces.size()];
        QString expected = text;
        qsizetype grown = 0;
        for (auto matches = pattern.globalMatch(text); matches.hasNext();) {
            const auto match = matches.next();
            if (match.captured(1) != QLatin1String("g"))
                continue;
            const QString tinted = match.captured().replace(QLatin1String("stop-color=\"a\""),
                                                            QLatin1String("stop-color=\"red\""));
            expected.replace(match.capturedStart() + grown, match.capturedLength(), tinted);
            grown += tinted.size() - match.capturedLength();
        }
        ASSERT_EQ(recolor_gradients(text, {QStringLiteral("g")}, QStringLiteral("red")), expected)
            << text.toStdString();
    }
}

TEST(LessMotion, IsAskedOfTheEnvironmentAndOfTheDesktopsSettings) {
    const TestSupport::TempDir dir;
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(dir.path().string()));
    EXPECT_FALSE(read_less_motion());
    write_file(dir / "gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=0\n");
    EXPECT_TRUE(read_less_motion());
    write_file(dir / "gtk-4.0/settings.ini", "[Settings]\ngtk-enable-animations=true\n");
    EXPECT_FALSE(read_less_motion());
    qputenv("CORVEL_LESS_MOTION", "1");
    EXPECT_TRUE(read_less_motion());
    qunsetenv("CORVEL_LESS_MOTION");
    qunsetenv("XDG_CONFIG_HOME");
}
