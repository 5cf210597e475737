#include "desktop/widgets/vbox_widget.h"
#include "desktop/widgets/widget_support.h"
#include "desktop/widgets/wrap_label.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

// What the pictures of the gallery do not show.

using namespace Corvel;

TEST(Painting, GradientsTakeTheirStopsAsFarAsTheyCanBeRead) {
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
        VBoxWidget box;
        box.resize(20, 101);
        box.set_style(NodeStyle{.fill = {stops, true}});
        const QImage image = picture_of(box);
        EXPECT_EQ(image.pixelColor(10, 50).alpha(), expected.empty() ? 0 : 255);
        for (std::size_t at = 0; at < expected.size(); ++at)
            EXPECT_NEAR(image.pixelColor(10, int(at) * 50).red(), expected[at], 4);
        box.set_style(
            NodeStyle{.fill = {"no colour"}, .border_fill = {"none"}, .border_thickness = 1});
        EXPECT_EQ(color_at(box, 0, 0), "#00000000");
    }
}

TEST(Painting, AWrappingLabelFitsOnOneLineAtItsOwnHint) {
    for (const char* text : {"Title", "A longer line, with commas; and more", "WWWWiiii",
                             "Projektgrößenübersicht", "a", "AVAVAV To. Ty"})
        for (int px = 9; px < 35; ++px) {
            RenderNode node;
            node.text = text;
            node.style = NodeStyle{.text_color = "no colour", .font_size = double(px)};
            const std::unique_ptr<WrapLabel> label(make_label(node, 28));
            label->setWordWrap(true);
            label->set_opacity(0.5);
            const QSize hint = label->sizeHint();
            EXPECT_EQ(label->heightForWidth(hint.width()), hint.height()) << text << " at " << px;
        }
}
