#include "site/favicon/generate_favicons.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QImageReader>
#include <QProcess>
#include <QStandardPaths>
#include <QtEndian>

#include <ctime>
#include <iostream>
#include <vector>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::file_tree;
using TestSupport::read_file;
using TestSupport::TempDir;
using TestSupport::write_file;

struct Icon {
    const char* name;
    int size;
    bool transparent;
};
constexpr Icon ICONS[] = {{"favicon-16x16.png", 16, true},
                          {"favicon-32x32.png", 32, true},
                          {"apple-touch-icon.png", 180, false},
                          {"android-chrome-192x192.png", 192, false},
                          {"android-chrome-512x512.png", 512, false}};

constexpr const char* PNG_SIGNATURE = "\x89PNG\r\n\x1a\n";

/// A disc that leaves the corners free.
constexpr const char* DISC = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 512 512">
    <circle id="disc" cx="256" cy="256" r="200" fill="#2040c0"/></svg>)";

fs::path example_images() {
    return fs::path(SOURCE_ROOT) / "examples/tidewater/images";
}

QImage load_png(const fs::path& file) {
    EXPECT_TRUE(read_file(file).starts_with(PNG_SIGNATURE)) << file;
    QImageReader reader(QString::fromStdString(file.string()), "png");
    QImage image;
    EXPECT_TRUE(reader.read(&image)) << file << ": " << reader.errorString().toStdString();
    return image;
}

/// The frames of an icon file, read by the bytes of its directory.
std::vector<QImage> read_ico(const fs::path& file) {
    const std::string bytes = read_file(file);
    const auto number = [&](std::size_t at) {
        return qFromLittleEndian<quint32>(bytes.data() + at);
    };
    EXPECT_EQ(bytes.substr(0, 6), std::string("\0\0\1\0\3\0", 6));
    std::vector<QImage> frames;
    std::size_t next = 54;
    for (std::size_t entry = 6; entry < 54; entry += 16) {
        const std::size_t size = number(entry + 8);
        EXPECT_EQ(number(entry + 12), next) << "no padding between the frames";
        const std::string png = bytes.substr(next, size);
        EXPECT_TRUE(png.starts_with(PNG_SIGNATURE));
        frames.push_back(QImage::fromData(QByteArray::fromStdString(png), "png"));
        EXPECT_EQ(bytes.substr(entry, 8), std::string(2, static_cast<char>(frames.back().width())) +
                                              std::string("\0\0\1\0\40\0", 6));
        next += size;
    }
    EXPECT_EQ(next, bytes.size());
    return frames;
}

std::string argb(const QColor& colour) {
    return colour.name(QColor::HexArgb).toStdString();
}

void expect_icon(const QImage& image, int size, const QColor& corner) {
    EXPECT_EQ(image.size(), QSize(size, size));
    for (const QPoint point : {QPoint(0, 0), QPoint(size - 1, 0), QPoint(0, size - 1)})
        EXPECT_EQ(argb(image.pixelColor(point)), argb(corner));
}

void expect_set(const fs::path& folder, const QColor& background) {
    for (const Icon& icon : ICONS) {
        SCOPED_TRACE(icon.name);
        expect_icon(load_png(folder / icon.name), icon.size,
                    icon.transparent ? QColor(0, 0, 0, 0) : background);
    }
    const std::vector<QImage> frames = read_ico(folder / "favicon.ico");
    ASSERT_EQ(frames.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i)
        expect_icon(frames[i], 16 * static_cast<int>(i + 1), QColor(0, 0, 0, 0));
    EXPECT_EQ(file_tree(folder).size(), 6u);
}

TEST(GenerateFavicons, WritesTheSetOnItsBackground) {
    const TempDir dir;
    write_file(dir / "disc.SvG", DISC);
    const std::pair<const char*, QColor> backgrounds[] = {{"", QColor(255, 255, 255)},
                                                          {"#f6f1e4", QColor(0xf6, 0xf1, 0xe4)},
                                                          {"red", QColor(255, 0, 0)}};
    for (const auto& [text, colour] : backgrounds) {
        const fs::path folder = dir / "out" / ("é " + std::string(text));
        ASSERT_EQ(generate_favicons({(dir / "disc.SvG").string(), folder.string(), text}), "");
        expect_set(folder, colour);
        EXPECT_EQ(argb(load_png(folder / "apple-touch-icon.png").pixelColor(90, 90)), "#ff2040c0");
    }
}

TEST(GenerateFavicons, TakesTheExampleLogoAndARaster) {
    const TempDir dir;
    const fs::path logo = dir / "logo";
    ASSERT_EQ(generate_favicons({(example_images() / "logo.svg").string(), logo.string(), ""}), "");
    const fs::path raster = dir / "raster";
    ASSERT_EQ(generate_favicons(
                  {(example_images() / "harbour.png").string(), raster.string(), "#102030"}),
              "");
    for (const fs::path& folder : {logo, raster}) {
        for (const Icon& icon : ICONS)
            EXPECT_EQ(load_png(folder / icon.name).size(), QSize(icon.size, icon.size));
        EXPECT_EQ(read_ico(folder / "favicon.ico").size(), 3u);
    }
    // The logo's own ground is rounded, so its corners are the site's.
    expect_set(logo, QColor(255, 255, 255));
}

TEST(GenerateFavicons, CentresWhatIsNotSquare) {
    const TempDir dir;
    QImage wide(200, 50, QImage::Format_RGB32);
    wide.fill(QColor(0, 128, 0));
    ASSERT_TRUE(wide.save(QString::fromStdString((dir / "wide.bmp").string())));
    write_file(dir / "tall.svg", R"(<svg xmlns="http://www.w3.org/2000/svg" width="50" height="200">
        <rect width="50" height="200" fill="#008000"/></svg>)");
    for (const bool tall : {false, true}) {
        const fs::path source = dir / (tall ? "tall.svg" : "wide.bmp");
        const fs::path folder = dir / (tall ? "tall" : "wide");
        ASSERT_EQ(generate_favicons({source.string(), folder.string(), "#ff0000"}), "");
        const QImage large = load_png(folder / "android-chrome-512x512.png");
        const QImage small = load_png(folder / "favicon-16x16.png");
        const auto at = [&](const QImage& image, int across) {
            const int middle = image.width() / 2;
            return argb(tall ? image.pixelColor(across, middle) : image.pixelColor(middle, across));
        };
        EXPECT_EQ(at(large, 190), "#ffff0000"); // the image is from 192 to 320
        EXPECT_EQ(at(large, 194), "#ff008000");
        EXPECT_EQ(at(large, 317), "#ff008000");
        EXPECT_EQ(at(large, 321), "#ffff0000");
        EXPECT_EQ(at(small, 5), "#00000000"); // and from 6 to 10
        EXPECT_EQ(at(small, 8), "#ff008000");
        EXPECT_EQ(at(small, 10), "#00000000");
    }
}

TEST(GenerateFavicons, AveragesLargeRasters) {
    // White lines that plain sampling would either miss or take for the whole.
    QImage lines(1024, 1024, QImage::Format_RGB32);
    lines.fill(Qt::black);
    for (int x = 0; x < 1024; x += 16)
        for (int y = 0; y < 1024; ++y)
            lines.setPixel(x, y, qRgb(255, 255, 255));
    const TempDir dir;
    ASSERT_TRUE(lines.save(QString::fromStdString((dir / "lines.png").string())));
    ASSERT_EQ(generate_favicons({(dir / "lines.png").string(), dir.path().string(), ""}), "");
    const QImage icon = load_png(dir / "favicon-16x16.png");
    for (int x = 1; x < 15; ++x)
        EXPECT_NEAR(icon.pixelColor(x, 8).red(), 16, 8) << x;
}

TEST(GenerateFavicons, SaysWhatIsWrong) {
    const TempDir dir;
    const std::string svg_tag = "<svg xmlns=\"http://www.w3.org/2000/svg\"";
    const std::string shape = "<rect width=\"9\" height=\"9\"/></svg>";
    write_file(dir / "ok.svg", DISC);
    write_file(dir / "text.svg", "no SVG");
    write_file(dir / "cut.svg", svg_tag + " width=\"9\" height=\"9\"><rect");
    write_file(dir / "sizeless.svg", svg_tag + ">" + shape);
    write_file(dir / "percent.svg", svg_tag + " width=\"100%\" height=\"100%\">" + shape);
    write_file(dir / "width.svg", svg_tag + " width=\"9\">" + shape);
    write_file(dir / "zero.svg", svg_tag + " width=\"0\" height=\"9\">" + shape);
    write_file(dir / "box.svg", svg_tag + " viewBox=\"0 0 9\">" + shape);
    write_file(dir / "point.svg", svg_tag + " viewBox=\"0 0 0 0\">" + shape);
    write_file(dir / "empty.png", "");
    write_file(dir / "cut.png", PNG_SIGNATURE);
    write_file(dir / "file", "in the way");
    const std::string root = dir.path().string() + "/";
    const std::string out = root + "out";
    struct Case {
        FaviconRequest request;
        std::string words;
    };
    std::vector<Case> cases = {
        {{root + "ok.svg", out, "#12345"}, "Background \"#12345\" is not a valid color."},
        {{root + "ok.svg", out, " "}, "Background \" \" is not a valid color."},
        {{root + "ok.svg", root + "file/out", ""}, "Could not create " + root + "file/out."},
        {{root + "ok.svg", root + "file", ""}, "Could not create " + root + "file."},
    };
    for (const char* name : {"none.svg", "text.svg", "cut.svg", "sizeless.svg", "percent.svg",
                             "box.svg", "point.svg", "width.svg", "zero.svg", "out.SVG"})
        cases.push_back(
            {{root + name, out, "bad"}, "Could not read " + root + name + " as an SVG."});
    for (const char* name : {"none.png", "empty.png", "cut.png", "file", "", "svg"})
        cases.push_back(
            {{root + name, out, "bad"}, "Could not read " + root + name + " as an image."});
    for (const Case& c : cases) {
        EXPECT_EQ(generate_favicons(c.request), c.words);
        EXPECT_FALSE(fs::exists(out)) << c.words;
    }
}

TEST(GenerateFavicons, StopsAtTheFileItCannotWrite) {
    const TempDir dir;
    write_file(dir / "ok.svg", DISC);
    std::vector<std::string> names;
    for (const Icon& icon : ICONS)
        names.push_back(icon.name);
    names.push_back("favicon.ico");
    for (std::size_t i = 0; i < names.size(); ++i) {
        const fs::path folder = dir / ("out " + names[i]);
        fs::create_directories(folder / names[i]);
        EXPECT_EQ(generate_favicons({(dir / "ok.svg").string(), folder.string(), ""}),
                  "Could not write " + names[i] + ".");
        EXPECT_EQ(file_tree(folder).size(), i + 1) << "the files before it stay";
    }
}

TEST(GenerateFavicons, WritesAnIconFileThatOthersRead) {
    const QString identify =
        QStandardPaths::findExecutable(QStringLiteral("identify"), {QStringLiteral("/usr/bin")});
    if (identify.isEmpty())
        GTEST_SKIP() << "no ImageMagick";
    const TempDir dir;
    ASSERT_EQ(
        generate_favicons({(example_images() / "logo.svg").string(), dir.path().string(), ""}), "");
    QProcess process;
    process.start(identify, {QStringLiteral("-format"), QStringLiteral("%m %wx%h %[channels]\\n"),
                             QString::fromStdString((dir / "favicon.ico").string())});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.readAllStandardError().toStdString(), "");
    const std::string frames = process.readAllStandardOutput().toStdString();
    std::size_t at = 0;
    for (const char* size : {" 16x16 ", " 32x32 ", " 48x48 "}) {
        at = frames.find(size, at);
        EXPECT_NE(at, std::string::npos) << frames;
    }
    EXPECT_EQ(std::count(frames.begin(), frames.end(), '\n'), 3) << frames;
}

TEST(GenerateFavicons, TakesNoNoticeableTime) {
    std::string shapes = R"(<svg xmlns="http://www.w3.org/2000/svg" width="512" height="512">
        <defs><linearGradient id="g"><stop offset="0" stop-color="#fff"/>
        <stop offset="1" stop-color="#246"/></linearGradient></defs>)";
    for (int i = 0; i < 60; ++i)
        shapes += "<circle cx=\"" + std::to_string(8 * i) +
                  "\" cy=\"256\" r=\"200\" fill=\"url(#g)\" fill-opacity=\"0.2\"/>";
    const TempDir dir;
    write_file(dir / "large.svg", shapes + "</svg>");
    for (const fs::path& source : {dir / "large.svg", example_images() / "logo.svg"}) {
        const std::clock_t start = std::clock();
        ASSERT_EQ(generate_favicons({source.string(), (dir / "out").string(), ""}), "");
        const double used = 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        std::cout << "  the set of " << source.filename().string() << ": " << used << " ms\n";
        EXPECT_LT(used, 120);
    }
}

} // namespace
} // namespace Lumenfold
