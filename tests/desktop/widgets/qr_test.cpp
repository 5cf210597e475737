#include "desktop/widgets/qr_widget.h"
#include "desktop/widgets/widget_support.h"

#include <gtest/gtest.h>

using namespace Corvel;

namespace {

/// A widget of ten pixels a module around a pattern drawn with "#".
std::unique_ptr<QrWidget> with_modules(const std::vector<std::string>& rows) {
    auto qr = std::make_unique<QrWidget>();
    qr->size = int(rows.size());
    for (const std::string& row : rows)
        for (const char c : row)
            qr->modules.push_back(c == '#' ? 1 : 0);
    qr->resize(qr->size * 10, qr->size * 10);
    return qr;
}

/// The corners of the module that are filled, as "tl tr br bl" with "-" for a rounded one.
std::string square_corners(const QImage& image, int col, int row) {
    const auto dark = [&](int dx, int dy) {
        return image.pixelColor(col * 10 + dx, row * 10 + dy).alpha() > 200;
    };
    std::string out;
    out += dark(0, 0) ? "tl " : "- ";
    out += dark(9, 0) ? "tr " : "- ";
    out += dark(9, 9) ? "br " : "- ";
    out += dark(0, 9) ? "bl" : "-";
    return out;
}

} // namespace

TEST(Qr, CornersAreRoundWhereNoNeighbourTouchesThem) {
    const auto lone = with_modules({"   ", " # ", "   "});
    EXPECT_EQ(square_corners(picture_of(*lone), 1, 1), "- - - -");
    const auto cross = with_modules({" # ", "###", " # "});
    EXPECT_EQ(square_corners(picture_of(*cross), 1, 1), "tl tr br bl");
    EXPECT_EQ(square_corners(picture_of(*cross), 1, 0), "- - br bl");
    EXPECT_EQ(square_corners(picture_of(*cross), 0, 1), "- tr br -");
    EXPECT_EQ(square_corners(picture_of(*cross), 2, 1), "tl - - bl");
    EXPECT_EQ(square_corners(picture_of(*cross), 1, 2), "tl tr - -");
    const auto diagonal = with_modules({"#  ", " # ", "  #"});
    EXPECT_EQ(square_corners(picture_of(*diagonal), 1, 1), "- - - -");
}

TEST(Qr, TheCodeIsCentredWithinThePaddingInTheStyleSColours) {
    const auto qr = with_modules({"##", "##"});
    qr->resize(100, 60);
    qr->set_style(styled([](NodeStyle& s) {
        s.fill = {"#ffffff", false};
        s.text_color = "#0000ff";
        s.padding_left = 20;
        s.padding_top = 10;
        s.padding_bottom = 10;
    }));
    // 80 by 40 remain, so a side of 40 from (40, 10).
    const QImage image = picture_of(*qr);
    EXPECT_EQ(color_at(image, 39, 30), "#ffffffff");
    EXPECT_EQ(color_at(image, 40, 30), "#ff0000ff");
    EXPECT_EQ(color_at(image, 79, 30), "#ff0000ff");
    EXPECT_EQ(color_at(image, 80, 30), "#ffffffff");
    EXPECT_EQ(color_at(image, 60, 9), "#ffffffff");
    EXPECT_EQ(color_at(image, 60, 10), "#ff0000ff");
    qr->set_style(styled([](NodeStyle& s) { s.text_color = "no colour"; }));
    EXPECT_EQ(color_at(picture_of(*qr), 50, 30), "#ff000000");
}

TEST(Qr, EncodesWhatFits) {
    QrWidget qr;
    qr.set_data("hello");
    EXPECT_EQ(qr.size, 21);
    EXPECT_EQ(qr.modules.size(), 441U);
    qr.modules[0] = 7;
    qr.set_data("hello");
    EXPECT_EQ(qr.modules[0], 7) << "the same text is not encoded again";
    qr.set_data(std::string(2331, 'a'));
    EXPECT_EQ(qr.size, 177);
    qr.set_data(std::string(2332, 'a'));
    EXPECT_EQ(qr.size, 0) << "too long";
    qr.set_data("");
    EXPECT_EQ(qr.size, 0);
    qr.resize(50, 50);
    EXPECT_EQ(color_at(picture_of(qr), 25, 25), "#00000000");
}
