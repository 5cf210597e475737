#include "support/temp_dir.h"
#include "svg/svg_animation.h"

#include <gtest/gtest.h>

namespace {

TEST(AnimatedIcons, MoveAndLoopWithoutAJump) {
    for (const char* icon :
         {"ext/corvel/icons/spinner", "icons/building", "ext/corvel/icons/update"}) {
        const Corvel::SvgAnimation animation(
            TestSupport::read_file(std::string(SOURCE_ROOT "/") + icon + ".svg"));
        ASSERT_TRUE(animation.is_animated()) << icon;
        const std::string frame = animation.frame_at(100);
        EXPECT_NE(frame, animation.frame_at(300)) << icon;
        EXPECT_EQ(animation.frame_at(0), animation.frame_at(animation.duration())) << icon;
        EXPECT_EQ(frame.find("<anim"), std::string::npos) << icon;
        EXPECT_EQ(frame.find("<style"), std::string::npos) << icon;
    }
}

} // namespace
