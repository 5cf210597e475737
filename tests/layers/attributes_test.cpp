#include "layers/attributes.h"
#include "layers/layers_support.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace Layers {
namespace {

using Corvel::NodeStyle;

NodeStyle style_of(const std::string& attributes, const std::vector<std::string>& states = {}) {
    const LogCapture log;
    StyleTree tree("L:\n  Known: 1\n" + attributes);
    tree.link();
    return read_node_style(&tree.layer("L"), states);
}

TEST(NodeStyleDefaults, OfNullAndOfAnEmptyLayer) {
    const NodeStyle defaults;
    EXPECT_EQ(read_node_style(nullptr, {"S"}), defaults);
    EXPECT_EQ(style_of(""), defaults);
    EXPECT_EQ(defaults.layout_shrink, -1);
    EXPECT_EQ(defaults.opacity, 1);
    EXPECT_TRUE(defaults.visible && defaults.wrap);
}

TEST(NodeStyleRules, OfNumbersStringsAndFlags) {
    const NodeStyle strange =
        style_of("  Layout.Shrink: \"x\"\n  Opacity: true\n  Size.Width: \"9\"\n"
                 "  Text: 5\n  Wrap: false\n  Visible: \"0\"\n");
    EXPECT_EQ(strange.layout_shrink, 0);
    EXPECT_EQ(strange.opacity, 0);
    EXPECT_EQ(strange.width, 0);
    EXPECT_EQ(strange.text_attr, "");
    EXPECT_TRUE(strange.wrap);
    EXPECT_TRUE(strange.visible);

    const NodeStyle plain =
        style_of("  Wrap: 0\n  Collapsed: -2\n  Source: \"s\"\n  Font.Size: 1.5\n");
    EXPECT_FALSE(plain.wrap);
    EXPECT_TRUE(plain.collapsed);
    EXPECT_EQ(plain.source, "s");
    EXPECT_EQ(plain.effective_source, "s");
    EXPECT_EQ(plain.font_size, 1.5);
}

TEST(NodeStyleFill, PrefersACompleteGradient) {
    const std::string gradient =
        "  Fill: \"f\"\n  Fill.Start Color: \"a\" @S: \"c\"\n  Fill.Start: 0.25\n";
    EXPECT_EQ(style_of(gradient).fill, (Corvel::Fill{"f", false}));
    EXPECT_EQ(style_of(gradient + "  Fill.End Color: 1\n").fill, (Corvel::Fill{"f", false}));
    EXPECT_EQ(style_of(gradient + "  Fill.End Color: \"b\"\n").fill,
              (Corvel::Fill{"0.25:a,0:b", true}));
    EXPECT_EQ(style_of(gradient + "  Fill.End Color: \"b\"\n  Fill.End: 1\n", {"S"}).fill,
              (Corvel::Fill{"0.25:c,1:b", true}));
    EXPECT_EQ(style_of("  Fill.Start Color: \"a\"\n").fill, Corvel::Fill{});
    EXPECT_EQ(style_of("  Fill: 3\n").fill, Corvel::Fill{});
}

TEST(NodeStyleBorder, IsReadFromTheChildLayer) {
    const NodeStyle style = style_of("  Thickness: 7\n  Fill: \"f\"\n  Border:\n    Fill: \"b\"\n"
                                     "    Thickness: 2\n    Opacity: 0\n");
    EXPECT_EQ(style.border_fill, (Corvel::Fill{"b", false}));
    EXPECT_EQ(style.border_thickness, 2);
    EXPECT_EQ(style.opacity, 1);
    EXPECT_EQ(style_of("  Thickness: 7\n").border_thickness, 0);
}

/// `attribute`, 10 by default, after scaling by 2 (icons 3, fonts 4) under `states`.
struct ScaleCase {
    std::string attributes;
    std::vector<std::string> states;
    bool is_icon;
    double NodeStyle::*field;
    double expected;
};

TEST(MobileScale, SparesWhatHasAMobileValue) {
    const std::vector<std::string> mobile{"Mobile"};
    const ScaleCase cases[] = {
        {"  Size.Width: 10\n", {"Narrow"}, false, &NodeStyle::width, 10},
        {"  Size.Width: 10\n", mobile, false, &NodeStyle::width, 20},
        {"  Size.Width: 10\n", mobile, true, &NodeStyle::width, 30},
        {"  Size.Height: 10\n", mobile, true, &NodeStyle::height, 30},
        {"  Size.Width: 10 @Mobile: 12\n", mobile, false, &NodeStyle::width, 12},
        {"  Size.Width: 10 @Mobile: 10\n", mobile, false, &NodeStyle::width, 20},
        {"  Size.Width: 10 @Hover: 14\n", {"Hover", "Mobile"}, false, &NodeStyle::width, 28},
        {"  Size.Width: 0\n", mobile, false, &NodeStyle::width, 0},
        {"  Margins.Left: -5\n", mobile, false, &NodeStyle::margin_left, -5},
        {"  Font.Size: 10\n", mobile, true, &NodeStyle::font_size, 40},
        {"  Layout.Spacing: 10\n", mobile, true, &NodeStyle::layout_spacing, 20},
        {"  Corner Radii.Bottom Right: 10\n", mobile, true, &NodeStyle::radius_bottom_right, 20},
        {"  Size.Max Width: 10\n", mobile, false, &NodeStyle::max_width, 10},
        {"  Border:\n    Thickness: 10\n", mobile, false, &NodeStyle::border_thickness, 20},
        {"  Border:\n    Thickness: 10 @Mobile: 11\n", mobile, false, &NodeStyle::border_thickness,
         11},
    };
    for (const ScaleCase& c : cases) {
        StyleTree tree("L:\n  Known: 1\n" + c.attributes);
        NodeStyle style = read_node_style(&tree.layer("L"), c.states);
        apply_mobile_scale(style, &tree.layer("L"), c.states, c.is_icon, 3, 4, 2);
        EXPECT_EQ(style.*c.field, c.expected) << c.attributes;
    }
}

TEST(MobileScale, ScalesValuesThatComeFromNoAttribute) {
    NodeStyle style;
    style.height = 10;
    style.border_thickness = 1;
    apply_mobile_scale(style, nullptr, {"Mobile"}, false, 3, 4, 2);
    EXPECT_EQ(style.height, 20);
    EXPECT_EQ(style.border_thickness, 2);
}

TEST(FormatNumber, HasNoTrailingZeros) {
    const std::pair<double, const char*> cases[] = {
        {0.25, "0.25"},
        {1, "1"},
        {0, "0"},
        {-0.5, "-0.5"},
        {100, "100"},
        {1e-9, "0"},
        {1234.5, "1234.5"},
        {0.1234567, "0.123457"},
        {1e21, "1000000000000000000000"},
        {std::numeric_limits<double>::infinity(), "inf"},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(format_number(value), text);
    EXPECT_EQ(format_number(std::numeric_limits<double>::max()).size(), 309u);
}

TEST(Vocabulary, NamesEachAttributeOnceWithAMeaning) {
    std::set<std::string_view> names;
    for (const AttributeInfo& info : attribute_vocabulary()) {
        EXPECT_TRUE(names.insert(info.name).second) << info.name;
        EXPECT_FALSE(info.meaning.empty()) << info.name;
    }
    EXPECT_EQ(names.size(), 59u);
}

} // namespace
} // namespace Layers
