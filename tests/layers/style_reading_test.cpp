#include "layers/attributes.h"
#include "layers/layers_support.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Layers {
namespace {

using Corvel::Fill;
using Corvel::NodeStyle;
using States = std::vector<std::string>;

/// The style of a layer with `attributes`, a line each.
NodeStyle style_of(const std::string& attributes, const States& states = {}) {
    const LogCapture log;
    StyleTree tree("L:\n  Known: 1\n" + attributes);
    return read_node_style(&tree.layer("L"), states);
}

TEST(StyleReading, EveryAttributeHasAPlaceOfItsOwn) {
    std::vector<NodeStyle> styles{style_of("")};
    EXPECT_EQ(styles[0], NodeStyle());
    EXPECT_EQ(read_node_style(nullptr, {"S"}), NodeStyle());
    for (const AttributeInfo& info : attribute_vocabulary()) {
        const std::string name(info.name);
        if (name.starts_with("Fill."))
            continue;
        const std::string indent = name == "Thickness" ? "  Border:\n    " : "  ";
        const auto read = [&](const char* value) {
            return style_of(indent + name + ": " + value + "\n");
        };
        if (info.kind != AttributeKind::Number) {
            const bool is_text = info.kind == AttributeKind::String;
            EXPECT_EQ(read(is_text ? "2" : "\"text\""), NodeStyle()) << name;
        }
        NodeStyle style = read(info.kind == AttributeKind::String ? "\"text\"" : "2");
        if (info.kind == AttributeKind::Flag && style == NodeStyle())
            style = read("0");
        EXPECT_EQ(std::count(styles.begin(), styles.end(), style), 0) << name;
        styles.push_back(style);
    }
}

TEST(StyleReading, ValuesOfAnotherKind) {
    const NodeStyle strange =
        style_of("  Layout.Shrink: \"x\"\n  Opacity: true\n  Size.Width: \"9\"\n"
                 "  Text: 5\n  Wrap: false\n  Visible: \"0\"\n");
    EXPECT_EQ(strange.layout_shrink, 0);
    EXPECT_EQ(strange.opacity, 0);
    EXPECT_EQ(strange.width, 0);
    EXPECT_EQ(strange.text_attr, "");
    EXPECT_TRUE(strange.wrap);
    EXPECT_TRUE(strange.visible);
    const NodeStyle plain = style_of("  Wrap: 0\n  Collapsed: -2\n  Source: \"s\"\n");
    EXPECT_FALSE(plain.wrap);
    EXPECT_TRUE(plain.collapsed);
    EXPECT_EQ(plain.effective_source, "s");
}

TEST(StyleReading, ACompleteGradientBeatsAFill) {
    const std::string start = "  Fill: \"f\"\n  Fill.Start Color: \"a\" @S: \"c\"\n"
                              "  Fill.Start: 0.25\n";
    const std::string both = start + "  Fill.End Color: \"b\"\n";
    EXPECT_EQ(style_of(start).fill, (Fill{"f", false}));
    EXPECT_EQ(style_of(start + "  Fill.End Color: 1\n").fill, (Fill{"f", false}));
    EXPECT_EQ(style_of(both).fill, (Fill{"0.25:a,0:b", true}));
    EXPECT_EQ(style_of(both + "  Fill.End: 1\n", {"S"}).fill, (Fill{"0.25:c,1:b", true}));
    EXPECT_EQ(style_of("  Fill.Start Color: \"a\"\n").fill, Fill());
    EXPECT_EQ(style_of("  Fill: 3\n").fill, Fill());
}

TEST(StyleReading, TheBorderIsAChildLayer) {
    const NodeStyle style = style_of("  Thickness: 7\n  Fill: \"f\"\n  Border:\n    Fill: \"b\"\n"
                                     "    Thickness: 2\n    Opacity: 0\n");
    EXPECT_EQ(style.border_fill, (Fill{"b", false}));
    EXPECT_EQ(style.border_thickness, 2);
    EXPECT_EQ(style.opacity, 1);
    EXPECT_EQ(style_of("  Thickness: 7\n").border_thickness, 0);
}

TEST(MobileScale, SparesWhatHasAMobileValue) {
    const States mobile{"Mobile"};
    const struct {
        std::string attributes; ///< below, one of them is 10 by default
        States states;
        bool is_icon;
        double NodeStyle::*field;
        double expected; ///< scaled by 2; icons by 3, fonts by 4
    } cases[] = {
        {"  Size.Width: 10\n", {"Narrow"}, false, &NodeStyle::width, 10},
        {"  Size.Width: 10\n", mobile, false, &NodeStyle::width, 20},
        {"  Size.Width: 10\n", mobile, true, &NodeStyle::width, 30},
        {"  Size.Height: 10\n", mobile, true, &NodeStyle::height, 30},
        {"  Size.Width: 10 @Mobile: 12\n", mobile, false, &NodeStyle::width, 12},
        {"  Size.Width: 10 @Mobile: 10\n", mobile, false, &NodeStyle::width, 20},
        {"  Size.Width: 10 @Hover: 14\n", {"Hover", "Mobile"}, false, &NodeStyle::width, 28},
        {"  Margins.Left: -5\n", mobile, false, &NodeStyle::margin_left, -5},
        {"  Font.Size: 10\n", mobile, true, &NodeStyle::font_size, 40},
        {"  Layout.Spacing: 10\n", mobile, true, &NodeStyle::layout_spacing, 20},
        {"  Corner Radii.Bottom Right: 10\n", mobile, true, &NodeStyle::radius_bottom_right, 20},
        {"  Size.Max Width: 10\n", mobile, false, &NodeStyle::max_width, 10},
        {"  Border:\n    Thickness: 10\n", mobile, false, &NodeStyle::border_thickness, 20},
    };
    for (const auto& c : cases) {
        StyleTree tree("L:\n  Known: 1\n" + c.attributes);
        NodeStyle style = read_node_style(&tree.layer("L"), c.states);
        apply_mobile_scale(style, &tree.layer("L"), c.states, c.is_icon, 3, 4, 2);
        EXPECT_EQ(style.*c.field, c.expected) << c.attributes;
    }
}

TEST(FormatNumber, HasNoTrailingZeros) {
    const std::pair<double, const char*> cases[] = {{0.25, "0.25"},
                                                    {1, "1"},
                                                    {0, "0"},
                                                    {-0.5, "-0.5"},
                                                    {100, "100"},
                                                    {1e-9, "0"},
                                                    {0.1234567, "0.123457"},
                                                    {1e21, "1000000000000000000000"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(format_number(value), text);
}

} // namespace
} // namespace Layers
