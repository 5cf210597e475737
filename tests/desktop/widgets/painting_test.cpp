#include "desktop/widgets/qr_widget.h"
#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/widget_support.h"
#include "desktop/widgets/wrap_label.h"

#include <gtest/gtest.h>

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
    const NodeStyle style{.fill = {"#ff0000"}, .border_fill = {"#0000ff"}, .border_thickness = 3};
    const QImage image = painted_box({40, 10}, style);
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

TEST(Label, FitsOnOneLineAtItsOwnHintAndFadesItsColour) {
    RenderNode node;
    for (const char* text : {"Title", "A longer line, with commas; and more", "WWWWiiii",
                             "Projektgrößenübersicht", "a", "AVAVAV To. Ty"})
        for (int px = 9; px < 35; ++px) {
            node.text = text;
            node.style = NodeStyle{.text_color = "#102030", .font_size = double(px)};
            const std::unique_ptr<WrapLabel> label(make_label(node, 28));
            label->setWordWrap(true);
            const QSize hint = label->sizeHint();
            EXPECT_EQ(label->heightForWidth(hint.width()), hint.height()) << text << " at " << px;
        }
    const std::unique_ptr<WrapLabel> label(make_label(node, 28));
    label->set_opacity(0.5);
    EXPECT_TRUE(label->styleSheet().contains(QStringLiteral("color: #80102030;")));
    label->set_color("no colour");
    EXPECT_TRUE(label->styleSheet().contains(QStringLiteral(" color: #"))) << "the palette's";
}

TEST(Qr, ModulesAreRoundWhereNoNeighbourTouchesThemAndCentredInThePadding) {
    QrWidget qr;
    qr.size = 3;
    qr.modules = {0, 1, 0, 0, 1, 1, 0, 0, 0};
    qr.resize(50, 30);
    qr.set_style(NodeStyle{.padding_left = 20, .text_color = "#0000ff"});
    const QImage image = picture_of(qr);
    const QPoint filled[] = {{39, 10}, {30, 9}, {39, 9}, {40, 10}, {30, 10}, {39, 19}};
    const QPoint empty[] = {{30, 0}, {39, 0}, {49, 10}, {49, 19}, {30, 19}, {29, 15}};
    for (const QPoint at : filled)
        EXPECT_EQ(color_at(image, at.x(), at.y()), blue) << at.x() << ", " << at.y();
    for (const QPoint at : empty)
        EXPECT_LT(image.pixelColor(at).alpha(), 200) << at.x() << ", " << at.y();
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
