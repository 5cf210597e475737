#include "desktop/layout_math.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Corvel;

namespace {

TEST(LayoutMath, DirectionsAreReadFromTheirText) {
    EXPECT_EQ(box_direction(""), (BoxDirection{false, false}));
    EXPECT_EQ(box_direction("Row"), (BoxDirection{true, false}));
    EXPECT_EQ(box_direction("Row-Reverse"), (BoxDirection{true, true}));
    EXPECT_EQ(box_direction("Column-Reverse"), (BoxDirection{false, true}));
    EXPECT_EQ(box_direction("-Reverse"), (BoxDirection{false, true}));
    EXPECT_EQ(box_direction("row"), (BoxDirection{false, false}));
}

TEST(LayoutMath, TheFirstRuleThatHoldsGivesTheStretches) {
    EXPECT_EQ(stretches_of(true, true, "End"), (Stretches{0, 0}));
    EXPECT_EQ(stretches_of(false, true, "End"), (Stretches{0, 1}));
    EXPECT_EQ(stretches_of(false, false, "Start"), (Stretches{0, 1}));
    EXPECT_EQ(stretches_of(false, false, "End"), (Stretches{1, 0}));
    EXPECT_EQ(stretches_of(false, false, "Center"), (Stretches{1, 1}));
}

TEST(LayoutMath, SharesAreWholeAndNeverNegative) {
    EXPECT_EQ(stretch_of(2.9, false, true), 2);
    EXPECT_EQ(stretch_of(2.9, true, true), 0);
    EXPECT_EQ(stretch_of(0.5, true, false), 0);
    EXPECT_EQ(stretch_of(-3, false, false), 0);
    EXPECT_EQ(truncated(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(truncated(-1e300), -16777215);
}

TEST(LayoutMath, AnIndexLandsBetweenTheLeadingItemsAndTheTrailingStretch) {
    EXPECT_EQ(layout_index(0, 1, 2, 4), 1);
    EXPECT_EQ(layout_index(2, 1, 1, 5), 2);
    EXPECT_EQ(layout_index(9, 1, 0, 4), 3);
    EXPECT_EQ(layout_index(1, 2, 5, 6), 2);
    EXPECT_EQ(layout_index(0, 1, 0, 0), 1);
}

TEST(LayoutMath, BarsAndSidesSlideOverTheirEdge) {
    EXPECT_EQ(bar_area(300, 200, 2, 40, 0), (Area{2, 158, 296, 40}));
    EXPECT_EQ(bar_area(300, 200, 2, 40, 1), (Area{2, 198, 296, 40}));
    EXPECT_EQ(bar_area(300, 200, 2, 40, 0.5), (Area{2, 178, 296, 40}));
    EXPECT_EQ(bar_reserve(41, 0.5), 20);
    EXPECT_EQ(bar_reserve(41, 1), 0);
    EXPECT_EQ(side_area(300, 200, 2, 100, 0), (Area{198, 2, 100, 196}));
    EXPECT_EQ(side_area(300, 200, 2, 100, 1), (Area{298, 2, 100, 196}));
    EXPECT_EQ(side_area(300, 200, 2, 0, 0), (Area{2, 2, 296, 196}));
    EXPECT_EQ(side_area(300, 200, 2, 900, 0), (Area{2, 2, 296, 196}));
    EXPECT_EQ(side_area(2, 2, 2, 900, 0), (Area{2, 2, 0, 0}));
    EXPECT_EQ(scrim_area(300, 200, 2), (Area{2, 2, 296, 196}));
    EXPECT_EQ(centred_area(500, 50, 300), (Area{100, 0, 300, 50}));
    EXPECT_EQ(centred_area(200, 50, 300), (Area{0, 0, 200, 50}));
}

} // namespace
