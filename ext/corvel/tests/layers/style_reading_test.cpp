#include "layers/attributes.h"
#include "layers/layers_support.h"
#include "layers/style_reader.h"
#include "support/case_file.h"

#include <algorithm>

namespace Layers {
namespace {

using Corvel::NodeStyle;

/// The style of a layer with `attributes`, a line each.
NodeStyle style_of(const std::string& attributes) {
    const LogCapture log;
    StyleTree tree("L:\n  Known: 1\n" + attributes);
    return read_node_style(&tree.layer("L"), {});
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

TEST(FormatNumber, HasNoTrailingZeros) {
    TestSupport::expect_lines("tests/layers/cases/numbers.txt", [](const std::string& number) {
        return format_number(std::stod(number));
    });
}

} // namespace
} // namespace Layers
