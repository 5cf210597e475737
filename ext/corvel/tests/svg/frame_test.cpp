#include "support/case_file.h"
#include "svg/svg_animation.h"

#include <limits>

namespace {

using Corvel::SvgAnimation;

/// The frame of a document; the first line of the input is its time, "500 ms".
std::string frame(const std::string& input) {
    const std::string source = input.substr(input.find('\n') + 1);
    return SvgAnimation(source).frame_at(std::stod(input));
}

TEST(Frame, ByElements) {
    TestSupport::expect_cases("tests/svg/cases/smil.txt", frame);
}

TEST(Frame, ByStyleSheets) {
    TestSupport::expect_cases("tests/svg/cases/css.txt", frame);
}

TEST(SvgAnimation, KnowsWhetherItMovesAndForHowLong) {
    const SvgAnimation still("<svg><style>g{transform:scale(2)}</style><g/></svg>");
    EXPECT_FALSE(still.is_animated());
    EXPECT_EQ(still.duration(), 0);

    SvgAnimation moving("<svg><style>@keyframes o{from{opacity:0}to{opacity:1}}"
                        "g{animation:o 1.5s}</style><g><rect><animate attributeName=\"x\" "
                        "values=\"0;9\" dur=\"2s\" repeatCount=\"indefinite\"/></rect></g></svg>");
    EXPECT_TRUE(moving.is_animated());
    EXPECT_EQ(moving.duration(), 2000);
    EXPECT_EQ(moving.end(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(
        SvgAnimation("<svg><animate attributeName=\"x\" values=\"0;9\" dur=\"2s\"/></svg>").end(),
        2000);
    const std::string first = moving.frame_at(700);
    moving.frame_at(1900);
    const SvgAnimation moved = std::move(moving);
    EXPECT_EQ(moved.frame_at(700), first);
}

} // namespace
