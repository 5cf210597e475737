#include "desktop/widgets/painting.h"

#include <gtest/gtest.h>

#include <QLinearGradient>

#include <string>
#include <vector>

using namespace Corvel;

TEST(Painting, GradientStopsKeepTheirOrderAndSkipWhatIsNoStop) {
    struct Case {
        const char* text;
        std::vector<std::pair<double, const char*>> stops; ///< no colour: unreadable
    };
    const std::vector<Case> cases = {
        {"0:#000000,1:#ffffff", {{0, "#000000"}, {1, "#ffffff"}}},
        {"0.75:#010203,,0.25: red ,", {{0.75, "#010203"}, {0.25, "#ff0000"}}},
        {"#123456", {}},
        {"", {}},
        {"0:nonsense,1:#fff", {{0, nullptr}, {1, "#ffffff"}}},
        {"x:#fff", {{0, "#ffffff"}}},
        {"0:#fff:1", {{0, nullptr}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const QGradientStops stops = parse_stops(c.text);
        ASSERT_EQ(stops.size(), qsizetype(c.stops.size()));
        for (qsizetype i = 0; i < stops.size(); ++i) {
            const auto& [offset, color] = c.stops[std::size_t(i)];
            EXPECT_DOUBLE_EQ(stops[i].first, offset);
            EXPECT_EQ(stops[i].second.isValid(), color != nullptr);
            EXPECT_EQ(stops[i].second.name().toStdString(), color ? color : "#000000");
        }
    }
}

TEST(Painting, Brushes) {
    const QRectF area(10, 20, 30, 40);
    EXPECT_EQ(fill_brush(area, {"", false}).style(), Qt::NoBrush);
    EXPECT_EQ(fill_brush(area, {"no colour", false}).style(), Qt::NoBrush);
    EXPECT_EQ(fill_brush(area, {"no stops", true}).style(), Qt::NoBrush);
    EXPECT_EQ(fill_brush(area, {"7:#fff,nan:#fff", true}).style(), Qt::NoBrush);
    EXPECT_EQ(fill_brush(area, {"#80102030", false}).color(), QColor(16, 32, 48, 128));
    const QBrush brush = fill_brush(area, {"0:#000,1:#fff", true});
    ASSERT_EQ(brush.style(), Qt::LinearGradientPattern);
    const auto* gradient = static_cast<const QLinearGradient*>(brush.gradient());
    EXPECT_EQ(gradient->start(), area.topLeft());
    EXPECT_EQ(gradient->finalStop(), area.bottomLeft());
}

TEST(Painting, EachCornerHasItsOwnRadius) {
    NodeStyle style;
    style.radius_top_left = 10;
    style.radius_bottom_right = 20;
    const QRectF area(0, 0, 100, 60);
    const QPainterPath path = rounded_path(area, style);
    EXPECT_EQ(path.boundingRect(), area);
    EXPECT_FALSE(path.contains(QPointF(2, 2)));
    EXPECT_TRUE(path.contains(QPointF(4, 4)));
    EXPECT_TRUE(path.contains(QPointF(98, 1)));
    EXPECT_TRUE(path.contains(QPointF(1, 58)));
    EXPECT_FALSE(path.contains(QPointF(95, 55)));
    EXPECT_TRUE(path.contains(QPointF(92, 52)));
}

TEST(Painting, PicturesAreFittedAndCentred) {
    const QRectF area(0, 0, 100, 50);
    EXPECT_EQ(fit_rect(area, QSize(10, 10), true), QRectF(25, 0, 50, 50));
    EXPECT_EQ(fit_rect(area, QSize(10, 10), false), QRectF(0, -25, 100, 100));
    EXPECT_EQ(fit_rect(area, QSize(400, 100), true), QRectF(0, 12.5, 100, 25));
    EXPECT_EQ(fit_rect(area, QSize(400, 100), false), QRectF(-50, 0, 200, 50));
}

TEST(Painting, WebAddresses) {
    EXPECT_TRUE(is_web_url("http://x"));
    EXPECT_TRUE(is_web_url("https://x"));
    for (const char* text : {"", "http:/x", "HTTP://x", "ftp://x", "/http://x", "file:///x"})
        EXPECT_FALSE(is_web_url(text)) << text;
}
