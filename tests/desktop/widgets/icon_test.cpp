#include "desktop/media/asset_paths.h"
#include "desktop/widgets/icon_widget.h"
#include "desktop/widgets/widget_support.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>

using namespace Corvel;

namespace {

std::string square(const std::string& inner, const std::string& size = "24") {
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + size +
           "\" height=\"24\" viewBox=\"0 0 " + size + " 24\">" + inner + "</svg>";
}

class Icon : public testing::Test {
protected:
    Icon() {
        using TestSupport::write_file;
        write_file(dir / "full.svg",
                   square(R"(<rect id="a" width="24" height="24" fill="#000"/>)"));
        write_file(dir / "left.svg",
                   square(R"(<rect id="a" width="12" height="24" fill="#000"/>)"));
        write_file(dir / "wide.svg",
                   square(R"(<rect id="a" width="48" height="24" fill="#000"/>)", "48"));
        write_file(dir / "moving.svg",
                   square(R"(<rect id="a" width="24" height="24" fill="#000">)"
                          R"(<animate attributeName="opacity" values="0;1" dur="100s"/></rect>)"));
        write_file(dir / "broken.svg", "<svg");
        set_icon_dirs({dir.path().string()});
    }
    TestSupport::TempDir dir;
};

} // namespace

TEST_F(Icon, TakesItsTintAndAnotherSource) {
    IconWidget icon("full");
    icon.resize(20, 20);
    EXPECT_EQ(color_at(picture_of(icon), 10, 10), "#00000000") << "not rendered before its tint";
    icon.set_color("#ff0000");
    EXPECT_EQ(color_at(picture_of(icon), 10, 10), "#ffff0000");
    icon.set_color("#00ff00");
    EXPECT_EQ(color_at(picture_of(icon), 10, 10), "#ff00ff00");
    icon.set_source("left");
    EXPECT_EQ(color_at(picture_of(icon), 5, 10), "#ff00ff00");
    EXPECT_EQ(color_at(picture_of(icon), 15, 10), "#00000000");
    for (const char* bad : {"nowhere", "broken", ""}) {
        icon.set_source(bad);
        EXPECT_EQ(color_at(picture_of(icon), 5, 10), "#00000000") << bad;
        icon.set_source("full");
    }
    EXPECT_TRUE(icon.testAttribute(Qt::WA_TransparentForMouseEvents));
}

TEST_F(Icon, FitRotationAndOpacity) {
    IconWidget icon("wide");
    icon.set_color("#ff0000");
    icon.resize(20, 20);
    EXPECT_EQ(color_at(picture_of(icon), 10, 1), "#ffff0000") << "stretched";
    icon.set_fit("Contain");
    EXPECT_EQ(color_at(picture_of(icon), 10, 1), "#00000000");
    EXPECT_EQ(color_at(picture_of(icon), 1, 10), "#ffff0000");
    icon.set_fit("Cover");
    EXPECT_EQ(color_at(picture_of(icon), 10, 1), "#ffff0000");
    icon.set_source("left");
    icon.set_fit("");
    icon.set_rotation(90);
    EXPECT_EQ(color_at(picture_of(icon), 15, 4), "#ffff0000") << "the left half turned up";
    EXPECT_EQ(color_at(picture_of(icon), 4, 15), "#00000000");
    icon.set_opacity(0.5);
    EXPECT_NEAR(picture_of(icon).pixelColor(10, 4).alpha(), 128, 1);
}

TEST_F(Icon, AMovingIconHasAClockOnlyWhileItIsShownAsSource) {
    IconWidget icon("moving");
    ASSERT_TRUE(icon.frame_timer);
    EXPECT_EQ(icon.frame_timer->interval(), 16);
    EXPECT_TRUE(icon.frame_timer->isActive());
    icon.set_color("#ff0000");
    icon.resize(20, 20);
    EXPECT_LT(picture_of(icon).pixelColor(10, 10).alpha(), 10) << "the first frame";
    icon.set_source("full");
    EXPECT_FALSE(icon.frame_timer);
    EXPECT_EQ(color_at(picture_of(icon), 10, 10), "#ffff0000");
    QTest::qWait(1);
    EXPECT_TRUE(icon.findChildren<QTimer*>().isEmpty());
}

TEST_F(Icon, FramesFollowOneAnotherOnScreen) {
    TestSupport::write_file(
        dir / "quick.svg",
        square(R"(<rect id="a" width="24" height="24" fill="#000">)"
               R"(<animate attributeName="opacity" values="0;1" dur="0.05s"/></rect>)"));
    IconWidget icon("quick");
    icon.set_color("#ff0000");
    icon.resize(20, 20);
    icon.show();
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return picture_of(icon).pixelColor(10, 10).alpha() > 250; }, 2000));
}
