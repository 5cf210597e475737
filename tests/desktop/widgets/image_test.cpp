#include "desktop/media/asset_paths.h"
#include "desktop/services/loopback_server.h"
#include "desktop/widgets/image_widget.h"
#include "desktop/widgets/widget_support.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QPainter>
#include <QPointer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>

using namespace Corvel;

namespace {

/// Left half red, right half blue.
QImage two_halves(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter(&image).fillRect(width / 2, 0, width, height, Qt::blue);
    return image;
}

QByteArray png_bytes(const QImage& image) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

SharedStyle image_style(const std::string& source, const std::string& fit = "") {
    return styled([&](NodeStyle& s) {
        s.effective_source = source;
        s.fit = fit;
        s.fill = {"#00ff00", false};
        s.text_color = "#808080";
    });
}

constexpr const char* red = "#ffff0000";
constexpr const char* green = "#ff00ff00";
constexpr const char* blue = "#ff0000ff";
constexpr int patience_ms = 5000;

class Image : public testing::Test {
protected:
    Image() {
        two_halves(200, 100).save(QString::fromStdString((dir / "halves.png").string()));
        TestSupport::write_file(dir / "tinted.SVG",
                                R"(<svg xmlns="http://www.w3.org/2000/svg" width="10" height="10">)"
                                R"(<rect id="a" width="10" height="10" fill="#000"/></svg>)");
        TestSupport::write_file(dir / "broken.png", "no picture");
        TestSupport::write_file(dir / "broken.svg", "no picture");
        set_media_dirs({dir.path().string()});
    }

    static std::unique_ptr<ImageWidget> widget(const SharedStyle& style, QSize size) {
        auto image = std::make_unique<ImageWidget>(style);
        image->resize(size);
        return image;
    }

    TestSupport::TempDir dir;
};

} // namespace

TEST_F(Image, CoversItsAreaUnlessToldToStayWithin) {
    struct Case {
        const char* fit;
        const char* top_left;
        const char* middle_left;
    };
    for (const Case& c : std::vector<Case>{{"", red, red},
                                           {"Cover", red, red},
                                           {"Contain", green, red},
                                           {"Aspect", green, red}}) {
        SCOPED_TRACE(c.fit);
        const auto image = widget(image_style("halves.png", c.fit), {50, 50});
        const QImage shot = picture_of(*image);
        EXPECT_EQ(color_at(shot, 1, 1), c.top_left);
        EXPECT_EQ(color_at(shot, 1, 25), c.middle_left);
        EXPECT_EQ(color_at(shot, 48, 25), blue);
    }
}

TEST_F(Image, ASourceThatCannotBeShownLeavesTheFill) {
    const auto image = widget(image_style(""), {20, 20});
    for (const char* bad :
         {"", "missing.png", "broken.png", "broken.svg", "/etc", "http://127.0.0.1:1/x.png"}) {
        image->set_source("halves.png");
        EXPECT_EQ(color_at(picture_of(*image), 2, 2), red);
        image->set_source(bad);
        QTest::qWait(20);
        EXPECT_EQ(color_at(picture_of(*image), 2, 2), green) << bad;
    }
    EXPECT_FALSE(image->loading);
}

TEST_F(Image, SvgTakesTheTextColourAndFollowsIt) {
    const auto image = widget(image_style("tinted.SVG"), {20, 20});
    EXPECT_EQ(color_at(picture_of(*image), 10, 10), "#ff808080");
    EXPECT_EQ(image->natural_size(), QSize(10, 10));
    SharedStyle style = image_style("tinted.SVG");
    style.edit().text_color = "#0000ff";
    image->apply_style(style);
    EXPECT_EQ(color_at(picture_of(*image), 10, 10), blue);
    image->set_source("halves.png");
    EXPECT_EQ(image->natural_size(), QSize(200, 100));
    EXPECT_EQ(color_at(picture_of(*image), 2, 2), red);
}

TEST_F(Image, CornersAndOpacityHoldForThePictureToo) {
    SharedStyle style = image_style("halves.png");
    style.edit().radius_top_left = 10;
    const auto image = widget(style, {40, 40});
    image->set_opacity(0.5);
    const QImage shot = picture_of(*image);
    EXPECT_EQ(color_at(shot, 0, 0), "#00000000");
    EXPECT_NEAR(shot.pixelColor(30, 30).alpha(), 192, 2) << "fill and picture, each at half";
}

TEST_F(Image, ALargePictureIsReducedByAveraging) {
    QImage stripes(400, 400, QImage::Format_RGB32);
    for (int x = 0; x < 400; ++x)
        QPainter(&stripes).fillRect(x, 0, 1, 400, x % 2 ? Qt::white : Qt::black);
    stripes.save(QString::fromStdString((dir / "stripes.png").string()));
    const auto image = widget(image_style("stripes.png"), {20, 20});
    const QImage shot = picture_of(*image);
    for (int x = 1; x < 19; ++x)
        EXPECT_NEAR(shot.pixelColor(x, 10).red(), 127, 25) << x;
}

namespace {

class RemoteImage : public Image {
protected:
    LoopbackServer server{[](const LoopbackServer::Request& request, QTcpSocket& socket) {
        const bool slow = request.path.starts_with("/slow");
        if (request.path == "/404.png")
            return answer(socket, "404 Not Found", png_bytes(two_halves(4, 4)));
        if (request.path == "/text.png")
            return answer(socket, "200 OK", "text");
        QTimer::singleShot(slow ? 60 : 0, &socket,
                           [&socket] { answer(socket, "200 OK", png_bytes(two_halves(40, 40))); });
    }};
};

} // namespace

TEST_F(RemoteImage, IsFetchedOnceAndThenTakenFromMemory) {
    const std::string url = server.url("/once.png");
    auto image = widget(image_style(url), {20, 20});
    EXPECT_TRUE(image->loading);
    EXPECT_EQ(color_at(picture_of(*image), 2, 2), green);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !image->loading; }, patience_ms));
    EXPECT_EQ(color_at(picture_of(*image), 2, 2), red);
    const auto second = widget(image_style(url), {20, 20});
    EXPECT_FALSE(second->loading);
    EXPECT_EQ(color_at(picture_of(*second), 2, 2), red);
    EXPECT_EQ(server.requests(), 1);
}

TEST_F(RemoteImage, TwoWidgetsDuringOneLoadFetchTwice) {
    const std::string url = server.url("/slow-twice.png");
    const auto one = widget(image_style(url), {20, 20});
    const auto two = widget(image_style(url), {20, 20});
    one->set_source(url);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !one->loading && !two->loading; }, patience_ms));
    EXPECT_EQ(server.requests(), 2);
}

TEST_F(RemoteImage, ALateReplyDoesNotReplaceANewerSource) {
    const std::string url = server.url("/slow-late.png");
    const auto image = widget(image_style(url), {20, 20});
    image->set_source("tinted.SVG");
    EXPECT_FALSE(image->loading);
    QTest::qWait(150);
    EXPECT_EQ(color_at(picture_of(*image), 10, 10), "#ff808080");
    image->set_source(url);
    EXPECT_FALSE(image->loading) << "it went into the memory all the same";
    EXPECT_EQ(color_at(picture_of(*image), 2, 2), red);
}

TEST_F(RemoteImage, FailuresLeaveTheFillAndAreTriedAgain) {
    for (const char* path : {"/404.png", "/text.png"}) {
        const auto image = widget(image_style(server.url(path)), {20, 20});
        ASSERT_TRUE(QTest::qWaitFor([&] { return !image->loading; }, patience_ms));
        EXPECT_EQ(color_at(picture_of(*image), 2, 2), green) << path;
        image->set_source(server.url(path));
        EXPECT_TRUE(image->loading);
    }
}

TEST_F(RemoteImage, AReplyToAWidgetThatIsGoneDoesNoHarm) {
    widget(image_style(server.url("/slow-gone.png")), {20, 20}).reset();
    QTest::qWait(120);
    EXPECT_EQ(server.requests(), 1);
}
