#include "desktop/media/asset_paths.h"
#include "desktop/services/loopback_server.h"
#include "desktop/widgets/icon_widget.h"
#include "desktop/widgets/image_widget.h"
#include "desktop/widgets/sizing.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/widget_support.h"
#include "desktop/widgets/wrap_label.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QPainter>
#include <QTcpSocket>
#include <QTimer>

#include <limits>
#include <memory>
#include <vector>

// What the pictures of the gallery do not show.

using namespace Corvel;

namespace {

constexpr const char* red = "#ffff0000";
constexpr const char* green = "#ff00ff00";
constexpr const char* blue = "#ff0000ff";
constexpr const char* nothing = "#00000000";

/// An image of the given width and a height of 24 with one black shape, `filled` pixels wide.
std::string svg(const std::string& width, const std::string& filled,
                const std::string& animation = {}) {
    return R"(<svg xmlns="http://www.w3.org/2000/svg" height="24" width=")" + width +
           R"("><rect id="a" height="24" fill="#000" width=")" + filled + "\">" + animation +
           "</rect></svg>";
}

/// Left half red, right half blue.
QImage two_halves(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter(&image).fillRect(width / 2, 0, width, height, Qt::blue);
    return image;
}

/// A folder of pictures, which is where names of icons and images lead.
class Media : public testing::Test {
protected:
    Media() {
        const std::string quick = R"(<animate attributeName="opacity" values="0;1" dur="0.05s"/>)";
        const std::pair<const char*, std::string> files[] = {
            {"full.svg", svg("24", "24")},          {"left.svg", svg("24", "12")},
            {"wide.SVG", svg("48", "48")},          {"wide.svg", svg("48", "48")},
            {"moving.svg", svg("24", "24", quick)}, {"broken.svg", "<svg"},
            {"broken.png", "no picture"},
        };
        for (const auto& [name, content] : files)
            TestSupport::write_file(dir / name, content);
        two_halves(200, 100).save(QString::fromStdString((dir / "halves.png").string()));
        set_icon_dirs({dir.path().string()});
        set_media_dirs({dir.path().string()});
    }

    static NodeStyle style(const std::string& source, const std::string& color = "#0000ff") {
        return {.fill = {"#00ff00"}, .text_color = color, .effective_source = source};
    }
    /// Waits for the end of the image's fetch and gives its colour at (2, 2).
    static std::string loaded_color(ImageWidget& image) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !image.loading; }, 5000));
        image.resize(20, 20);
        return color_at(image, 2, 2);
    }
    TestSupport::TempDir dir;
};

} // namespace

TEST_F(Media, AnIconThatCannotBeShownLeavesNothingBehind) {
    IconWidget icon("left");
    icon.resize(20, 20);
    icon.set_color("#ff0000");
    icon.set_rotation(90);
    for (const char* bad : {"nowhere", "broken", ""}) {
        EXPECT_EQ(color_at(icon, 15, 4), red) << "the left half turned up";
        EXPECT_EQ(color_at(icon, 4, 15), nothing);
        icon.set_source(bad);
        EXPECT_EQ(color_at(icon, 15, 4), nothing) << bad;
        icon.set_source("left");
    }
}

TEST_F(Media, AMovingIconHasAClockOnlyWhileItIsTheSource) {
    IconWidget icon("moving");
    icon.set_color("#ff0000");
    icon.resize(20, 20);
    ASSERT_TRUE(icon.frame_timer);
    EXPECT_EQ(icon.frame_timer->interval(), 16);
    icon.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return color_at(icon, 10, 10) == red; }, 2000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !icon.frame_timer->isActive(); }, 2000))
        << "an animation that has ended is drawn no more";
    icon.set_source("full");
    QTest::qWait(1);
    EXPECT_TRUE(icon.findChildren<QTimer*>().isEmpty());
    EXPECT_EQ(color_at(icon, 10, 10), red);
}

TEST_F(Media, AnImageTakesAnyKindOfFileAndSvgItsTextColour) {
    ImageWidget image(style("wide.SVG"));
    EXPECT_EQ(loaded_color(image), blue);
    image.apply_style(style("wide.SVG", "#ff0000"));
    EXPECT_EQ(loaded_color(image), red);
    EXPECT_EQ(image.natural_size(), QSize(48, 24));
    for (const char* bad :
         {"", "missing.png", "broken.png", "broken.svg", "/etc", "http://127.0.0.1:1/x.png"}) {
        image.set_source("halves.png");
        EXPECT_EQ(loaded_color(image), red);
        image.set_source(bad);
        EXPECT_EQ(loaded_color(image), green) << bad;
    }
    image.set_source("moving.svg");
    image.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return color_at(image, 2, 2) == red; }, 2000));
}

TEST_F(Media, ARemotePictureIsFetchedOnceAndReplacesNoNewerSource) {
    int fetches = 0;
    LoopbackServer server([&](const LoopbackServer::Request& request, QTcpSocket& socket) {
        QBuffer png;
        png.open(QIODevice::WriteOnly);
        two_halves(40, 40).save(&png, "PNG");
        if (request.path == "/404.png")
            answer(socket, "404 Not Found", png.data());
        else if (request.path == "/text.png")
            answer(socket, "200 OK", "text");
        else
            QTimer::singleShot(++fetches * 30, &socket,
                               [&socket, data = png.data()] { answer(socket, "200 OK", data); });
    });
    for (const char* path : {"/404.png", "/text.png"}) {
        ImageWidget image(style(server.url(path)));
        EXPECT_EQ(loaded_color(image), green) << path;
        image.set_source(server.url(path));
        EXPECT_TRUE(image.loading) << "a failure is tried again";
    }
    const std::string url = server.url("/picture.png");
    { const ImageWidget gone(style(url)); } // the reply finds nobody
    {
        ImageWidget image(style(url));
        EXPECT_TRUE(image.loading);
        EXPECT_EQ(color_at(image, 2, 2), green);
        image.set_source("wide.svg");
        QTest::qWait(200);
        EXPECT_EQ(loaded_color(image), blue);
        EXPECT_EQ(fetches, 2) << "two widgets during one load fetch twice";
    }
    ImageWidget later(style(url));
    EXPECT_FALSE(later.loading);
    EXPECT_EQ(loaded_color(later), red);
    EXPECT_EQ(fetches, 2);
}

namespace {

/// The sides of a widget, a free one as 0.
QSize limits_of(const QWidget& widget) {
    const QSize most = widget.maximumSize();
    return {most.width() == QWIDGETSIZE_MAX ? 0 : most.width(),
            most.height() == QWIDGETSIZE_MAX ? 0 : most.height()};
}

} // namespace

TEST_F(Media, SizesAreAsGivenAndIconsAndMediaKeepTheirProportions) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        NodeStyle style;
        QSize plain;
        QSize icon;
        QSize image;
    } cases[] = {
        {{}, {0, 0}, {0, 0}, {0, 0}},
        {{.width = 30}, {30, 0}, {30, 15}, {30, 0}},
        {{.height = 15}, {0, 15}, {30, 15}, {0, 15}},
        {{.width = 23.6, .height = 11.4}, {23, 11}, {24, 11}, {23, 11}},
        {{.width = 5, .fit = "Aspect"}, {5, 0}, {5, 3}, {5, 3}},
        {{.width = 30.5, .height = 40, .aspect_ratio = 2}, {30, 40}, {31, 40}, {31, 0}},
        {{.width = 1e300, .height = nan}, {0, 0}, {0, 0}, {0, 0}},
    };
    QWidget plain;
    IconWidget icon("wide");
    icon.reload();
    ImageWidget image(style("wide.svg"));
    for (const auto& c : cases) {
        apply_fixed_size(&plain, c.style);
        apply_icon_size(&icon, c.style);
        apply_media_size(&image, c.style);
        EXPECT_EQ(limits_of(plain), c.plain);
        EXPECT_EQ(limits_of(icon), c.icon);
        EXPECT_EQ(limits_of(image), c.image);
        EXPECT_EQ(image.heightForWidth(101), c.style.aspect_ratio > 0 ? 51 : -1);
    }
}

TEST(Painting, GradientsTakeTheirStopsAsFarAsTheyCanBeRead) {
    const struct {
        const char* stops;
        std::vector<int> red; ///< at the top, in the middle and at the bottom; none: not painted
    } cases[] = {
        {"0:#000000,1:#ffffff", {0, 127, 255}},
        {"0.75:#0a0000,,0.25: red ,", {255, 132, 10}},
        {"x:#fff", {255, 255, 255}},
        {"#123456", {}},
        {"7:#fff,nan:#fff", {}},
    };
    for (const auto& [stops, expected] : cases) {
        SCOPED_TRACE(stops);
        VBoxWidget box;
        box.resize(20, 101);
        box.set_style(NodeStyle{.fill = {stops, true}});
        const QImage image = picture_of(box);
        EXPECT_EQ(image.pixelColor(10, 50).alpha(), expected.empty() ? 0 : 255);
        for (std::size_t at = 0; at < expected.size(); ++at)
            EXPECT_NEAR(image.pixelColor(10, int(at) * 50).red(), expected[at], 4);
        box.set_style(
            NodeStyle{.fill = {"no colour"}, .border_fill = {"none"}, .border_thickness = 1});
        EXPECT_EQ(color_at(box, 0, 0), nothing);
    }
}

TEST(Painting, AWrappingLabelFitsOnOneLineAtItsOwnHint) {
    for (const char* text : {"Title", "A longer line, with commas; and more", "WWWWiiii",
                             "Projektgrößenübersicht", "a", "AVAVAV To. Ty"})
        for (int px = 9; px < 35; ++px) {
            RenderNode node;
            node.text = text;
            node.style = NodeStyle{.text_color = "no colour", .font_size = double(px)};
            const std::unique_ptr<WrapLabel> label(make_label(node, 28));
            label->setWordWrap(true);
            label->set_opacity(0.5);
            const QSize hint = label->sizeHint();
            EXPECT_EQ(label->heightForWidth(hint.width()), hint.height()) << text << " at " << px;
        }
}
