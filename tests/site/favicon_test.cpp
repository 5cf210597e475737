#include "site/favicon/generate_favicons.h"
#include "support/case_file.h"

#include <QColor>
#include <QImage>
#include <QtEndian>

#include <ctime>
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

/// A disc that leaves the corners free.
constexpr const char* DISC = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 512 512">
    <circle id="disc" cx="256" cy="256" r="200" fill="#2040c0"/></svg>)";

QImage load_png(const fs::path& file) {
    const QImage image = QImage::fromData(QByteArray::fromStdString(read_file(file)), "png");
    EXPECT_FALSE(image.isNull()) << file;
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
        frames.push_back(
            QImage::fromData(QByteArray::fromStdString(bytes.substr(next, size)), "png"));
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
    const std::string source = (dir / "disc.SvG").string();
    write_file(source, DISC);
    const std::pair<const char*, QColor> backgrounds[] = {{"", QColor(255, 255, 255)},
                                                          {"#f6f1e4", QColor(0xf6, 0xf1, 0xe4)},
                                                          {"red", QColor(255, 0, 0)}};
    for (const auto& [text, colour] : backgrounds) {
        const fs::path folder = dir / "out" / ("é " + std::string(text));
        ASSERT_EQ(generate_favicons({source, folder.string(), text}), "");
        expect_set(folder, colour);
        EXPECT_EQ(argb(load_png(folder / "apple-touch-icon.png").pixelColor(90, 90)), "#ff2040c0");
    }
    const fs::path logo = fs::path(SOURCE_ROOT) / "examples/tidewater/images/logo.svg";
    const std::clock_t start = std::clock();
    ASSERT_EQ(generate_favicons({logo.string(), (dir / "logo").string(), ""}), "");
    EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, 0.5);
    expect_set(dir / "logo", QColor(255, 255, 255)); // its ground is rounded
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

/// Cases of cases/favicons.txt: "NAME|TEXT", a file and what it holds, or "NAME" of none.
TEST(GenerateFavicons, SaysWhatIsWrong) {
    const TempDir dir;
    const std::string root = dir.path().string() + "/";
    const std::string out = root + "out";
    const auto words_for = [&](const std::string& source, const std::string& background) {
        std::string words = generate_favicons({source, out, background});
        EXPECT_FALSE(fs::exists(out)) << words;
        if (const std::size_t at = words.find(root); at != std::string::npos)
            words.replace(at, root.size(), "DIR/");
        return words;
    };
    TestSupport::expect_lines("tests/site/cases/favicons.txt", [&](const std::string& file) {
        const std::size_t bar = std::min(file.find('|'), file.size());
        if (bar < file.size())
            write_file(root + file.substr(0, bar), file.substr(bar + 1));
        return words_for(root + file.substr(0, bar), "bad");
    });
    write_file(dir / "cut.png", "\x89PNG\r\n\x1a\n");
    EXPECT_EQ(words_for(root + "cut.png", "bad"), "Could not read DIR/cut.png as an image.");
    EXPECT_EQ(words_for(root, "bad"), "Could not read DIR/ as an image.");
    write_file(dir / "ok.svg", DISC);
    for (const std::string background : {"#12345", " "})
        EXPECT_EQ(words_for(root + "ok.svg", background),
                  "Background \"" + background + "\" is not a valid color.");
    write_file(dir / "file", "in the way");
    EXPECT_EQ(generate_favicons({root + "ok.svg", root + "file/out", ""}),
              "Could not create " + root + "file/out.");
    int written = 0;
    for (const char* name : {ICONS[0].name, ICONS[1].name, ICONS[2].name, ICONS[3].name,
                             ICONS[4].name, "favicon.ico"}) {
        const fs::path folder = dir / ("out " + std::string(name));
        fs::create_directories(folder / name);
        EXPECT_EQ(generate_favicons({root + "ok.svg", folder.string(), ""}),
                  "Could not write " + std::string(name) + ".");
        EXPECT_EQ(file_tree(folder).size(), ++written) << "the files before it stay";
    }
}

} // namespace
} // namespace Lumenfold
