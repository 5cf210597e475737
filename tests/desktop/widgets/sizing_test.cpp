#include "desktop/media/asset_paths.h"
#include "desktop/widgets/icon_widget.h"
#include "desktop/widgets/image_widget.h"
#include "desktop/widgets/sizing.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

using namespace Corvel;

namespace {

/// "min..max" of both sides; a fixed side is one number, a free one "free".
std::string limits_of(const QWidget& widget) {
    const auto side = [](int least, int most) {
        if (least == most)
            return std::to_string(least);
        return least == 0 && most == QWIDGETSIZE_MAX
                   ? std::string("free")
                   : std::to_string(least) + ".." + std::to_string(most);
    };
    return side(widget.minimumWidth(), widget.maximumWidth()) + " x " +
           side(widget.minimumHeight(), widget.maximumHeight());
}

NodeStyle sized(double width, double height, const char* fit = "", double aspect = 0) {
    NodeStyle style;
    style.width = width;
    style.height = height;
    style.fit = fit;
    style.aspect_ratio = aspect;
    return style;
}

class Sizing : public testing::Test {
protected:
    Sizing() {
        TestSupport::write_file(
            dir / "wide.svg",
            R"(<svg xmlns="http://www.w3.org/2000/svg" width="40" height="20"/>)");
        set_icon_dirs({dir.path().string()});
        set_media_dirs({dir.path().string()});
    }
    TestSupport::TempDir dir;
};

} // namespace

TEST_F(Sizing, PlainWidgets) {
    QWidget widget;
    apply_fixed_size(&widget, sized(40.9, 0));
    EXPECT_EQ(limits_of(widget), "40 x free");
    apply_fixed_size(&widget, sized(0, 12));
    EXPECT_EQ(limits_of(widget), "free x 12");
    apply_fixed_size(&widget, sized(-5, 0.5));
    EXPECT_EQ(limits_of(widget), "free x free");
    apply_fixed_size(&widget, sized(1e300, std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(widget.maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

TEST_F(Sizing, IconsKeepTheirProportions) {
    IconWidget icon("wide");
    apply_icon_size(&icon, sized(30, 0));
    EXPECT_EQ(limits_of(icon), "30 x free") << "nothing rendered yet, so no proportions";
    icon.reload();
    const std::vector<std::pair<NodeStyle, const char*>> cases = {
        {sized(30, 0), "30 x 15"},    {sized(0, 15), "30 x 15"}, {sized(24, 24), "24 x 24"},
        {sized(0, 0), "free x free"}, {sized(5, 0), "5 x 3"},    {sized(23.6, 11.4), "24 x 11"},
    };
    for (const auto& [style, expected] : cases) {
        apply_icon_size(&icon, style);
        EXPECT_EQ(limits_of(icon), expected);
    }
}

TEST_F(Sizing, MediaByAspectRatioByNatureOrAsGiven) {
    NodeStyle source;
    source.effective_source = "wide.svg";
    ImageWidget image(source);
    const std::vector<std::pair<NodeStyle, const char*>> cases = {
        {sized(30.5, 40, "Aspect", 2), "31 x free"}, {sized(0, 40, "", 2), "free x free"},
        {sized(30, 0, "Aspect"), "30 x 15"},         {sized(0, 15, "Aspect"), "30 x 15"},
        {sized(30.9, 0, "Contain"), "30 x free"},
    };
    for (const auto& [style, expected] : cases) {
        apply_media_size(&image, style);
        EXPECT_EQ(limits_of(image), expected);
        EXPECT_EQ(image.hasHeightForWidth(), style.aspect_ratio > 0);
        EXPECT_EQ(image.sizePolicy().hasHeightForWidth(), style.aspect_ratio > 0);
        EXPECT_EQ(image.heightForWidth(101), style.aspect_ratio > 0 ? 51 : -1);
    }
}
