#include "desktop/widgets/painting.h"
#include "desktop/widgets/qr_widget.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/widget_support.h"
#include "desktop/widgets/wrap_label.h"

#include <gtest/gtest.h>

#include <QFontInfo>

#include <memory>
#include <vector>

using namespace Corvel;

namespace {

constexpr const char* red = "#ffff0000";
constexpr const char* blue = "#ff0000ff";
constexpr const char* nothing = "#00000000";

QImage painted_box(QSize size, const NodeStyle& style, double opacity = 1) {
    VBoxWidget box;
    box.resize(size);
    box.set_style(style);
    box.set_opacity(opacity);
    return picture_of(box);
}

} // namespace

TEST(Painting, TheBorderLiesWithinAndTheFillBelowIt) {
    const QImage image = painted_box(
        {40, 10}, {.fill = {"#ff0000"}, .border_fill = {"#0000ff"}, .border_thickness = 3});
    for (int y = 0; y < 10; ++y)
        EXPECT_EQ(color_at(image, 20, y), y < 3 || y >= 7 ? blue : red) << y;
    EXPECT_EQ(color_at(image, 2, 5), blue);
    EXPECT_EQ(color_at(image, 3, 5), red);
}

TEST(Painting, EachCornerHasItsOwnRadiusAndOpacityHoldsForAll) {
    const NodeStyle style{.fill = {"#ffffff"}, .radius_top_left = 10, .radius_bottom_right = 20};
    const QImage image = painted_box({100, 60}, style, 0.5);
    for (const QPoint outside : {QPoint(1, 1), QPoint(95, 56)})
        EXPECT_EQ(image.pixelColor(outside).alpha(), 0);
    for (const QPoint inside : {QPoint(5, 5), QPoint(98, 1), QPoint(1, 58), QPoint(91, 51)})
        EXPECT_NEAR(image.pixelColor(inside).alpha(), 128, 1);
    EXPECT_EQ(color_at(painted_box({9, 9}, style, -1), 8, 0), nothing);
}

TEST(Painting, GradientsRunFromTopToBottomThroughTheirStops) {
    const struct {
        const char* stops;
        std::vector<int> red; ///< at the top, in the middle and at the bottom; none: not painted
    } cases[] = {
        {"0:#000000,1:#ffffff", {0, 127, 255}},
        {"0.75:#0a0000,,0.25: red ,", {255, 132, 10}},
        {"x:#fff", {255, 255, 255}},
        {"#123456", {}},
        {"", {}},
        {"7:#fff,nan:#fff", {}},
    };
    for (const auto& [stops, expected] : cases) {
        SCOPED_TRACE(stops);
        const QImage image = painted_box({20, 101}, {.fill = {stops, true}});
        EXPECT_EQ(image.pixelColor(10, 50).alpha(), expected.empty() ? 0 : 255);
        for (std::size_t at = 0; at < expected.size(); ++at)
            EXPECT_NEAR(image.pixelColor(10, int(at) * 50).red(), expected[at], 4);
    }
    EXPECT_EQ(color_at(painted_box({9, 9}, {.fill = {"no colour"}}), 4, 4), nothing);
}

namespace {

std::unique_ptr<WrapLabel> label_of(const std::string& text, const NodeStyle& style = {}) {
    RenderNode node;
    node.text = text;
    node.style = style;
    return std::unique_ptr<WrapLabel>(make_label(node, 28));
}

} // namespace

TEST(Label, FontAndColourComeFromTheStyle) {
    const auto plain = label_of("use <kbd>x</kbd> & <b>y");
    EXPECT_EQ(plain->textFormat(), Qt::PlainText) << "names are not markup";
    EXPECT_EQ(plain->font().pixelSize(), 28);
    EXPECT_EQ(plain->font().weight(), 400);
    EXPECT_EQ(plain->styleSheet().toStdString(), "background: transparent;");
    const auto set = label_of("x", {.text_color = "#102030",
                                    .font_size = 13.9,
                                    .font_weight = 650,
                                    .font_family = "monospace"});
    EXPECT_EQ(set->font().pixelSize(), 13);
    EXPECT_EQ(set->font().weight(), 650);
    EXPECT_TRUE(QFontInfo(set->font()).fixedPitch());
    const std::pair<double, const char*> colours[] = {
        {1, "#ff102030"}, {0.5, "#80102030"}, {-2, "#00102030"}};
    for (const auto& [opacity, colour] : colours) {
        set->set_opacity(opacity);
        EXPECT_EQ(set->styleSheet().toStdString(),
                  std::string("background: transparent; color: ") + colour + ";");
    }
    set->set_color("no colour");
    EXPECT_TRUE(set->styleSheet().contains(QStringLiteral("color: #00"))) << "the palette's";
}

TEST(Label, AWrappingLabelFitsOnOneLineAtItsOwnHint) {
    for (const char* text : {"Title", "A longer line, with commas; and more", "WWWWiiii",
                             "Projektgrößenübersicht", "a", "AVAVAV To. Ty"})
        for (int px = 9; px < 35; ++px) {
            const auto label = label_of(text, {.font_size = double(px)});
            label->setWordWrap(true);
            const QSize hint = label->sizeHint();
            EXPECT_EQ(label->heightForWidth(hint.width()), hint.height()) << text << " at " << px;
        }
}

TEST(Qr, CornersAreRoundWhereNoNeighbourTouchesThem) {
    const struct {
        const char* modules; ///< three rows of three; ten pixels a module
        QPoint at;
        const char* square; ///< corners that are filled, clockwise from the top left
    } cases[] = {
        {"    #    ", {1, 1}, "...."}, {" # ### # ", {1, 1}, "####"}, {" # ### # ", {1, 0}, "..##"},
        {" # ### # ", {0, 1}, ".##."}, {" # ### # ", {2, 1}, "#..#"}, {" # ### # ", {1, 2}, "##.."},
        {"#   #   #", {1, 1}, "...."},
    };
    for (const auto& [modules, at, square] : cases) {
        QrWidget qr;
        qr.size = 3;
        for (const char* module = modules; *module; ++module)
            qr.modules.push_back(*module == '#' ? 1 : 0);
        qr.resize(30, 30);
        const QImage image = picture_of(qr);
        std::string corners;
        for (const QPoint corner : {QPoint(0, 0), QPoint(9, 0), QPoint(9, 9), QPoint(0, 9)})
            corners += image.pixelColor(at * 10 + corner).alpha() > 200 ? '#' : '.';
        EXPECT_EQ(corners, square) << modules << " at " << at.x() << ", " << at.y();
    }
}

TEST(Qr, TheCodeIsCentredWithinThePaddingInTheStyleSColours) {
    QrWidget qr;
    qr.size = 1;
    qr.modules = {1};
    qr.resize(100, 60);
    NodeStyle style{.fill = {"#ffffff"},
                    .padding_left = 20,
                    .padding_top = 10,
                    .padding_bottom = 10,
                    .text_color = "#0000ff"};
    qr.set_style(style);
    // 80 by 40 remain, so a side of 40 from (40, 10), its corners rounded by 14.
    const QImage image = picture_of(qr);
    for (const QPoint inside : {QPoint(40, 30), QPoint(79, 30), QPoint(60, 10), QPoint(60, 49)})
        EXPECT_EQ(color_at(image, inside.x(), inside.y()), blue);
    for (const QPoint outside : {QPoint(39, 30), QPoint(80, 30), QPoint(60, 9), QPoint(60, 50)})
        EXPECT_EQ(color_at(image, outside.x(), outside.y()), "#ffffffff");
    style.text_color = "no colour";
    qr.set_style(style);
    EXPECT_EQ(color_at(qr, 60, 30), "#ff000000");
}

TEST(Qr, EncodesWhatFits) {
    const std::pair<std::string, int> cases[] = {
        {"hello", 21}, {std::string(2331, 'a'), 177}, {std::string(2332, 'a'), 0}, {"", 0}};
    QrWidget qr;
    qr.resize(531, 531);
    for (const auto& [text, size] : cases) {
        qr.set_data(text);
        EXPECT_EQ(qr.size, size);
        EXPECT_EQ(color_at(qr, 10, 1), size ? "#ff000000" : nothing) << text.size();
    }
}
