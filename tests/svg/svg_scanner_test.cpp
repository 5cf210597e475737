#include "svg/selector_index.h"
#include "svg/svg_document.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace Corvel::Svg;

TEST(SvgScanner, KnowsTheExtentOfElements) {
    const SvgDocument document("<?xml?><!DOCTYPE svg><svg><g id=\"a\"/>t<!-- <g> --></svg>");
    ASSERT_EQ(document.elements.size(), 2u);
    const SvgElement& svg = document.elements[0];
    const SvgElement& g = document.elements[1];
    EXPECT_EQ(svg.parent, -1);
    EXPECT_EQ(svg.children, std::vector<std::int32_t>{1});
    EXPECT_EQ(svg.end, document.text.size());
    EXPECT_EQ(g.parent, 0);
    EXPECT_EQ(document.text.substr(g.start, g.end - g.start), "<g id=\"a\"/>");
    EXPECT_EQ(document.text.substr(g.name_end, 4), " id=");
}

struct AttributeCase {
    const char* tag;
    std::vector<std::pair<std::string, std::string>> attributes;
};

TEST(SvgScanner, ReadsAttributes) {
    const AttributeCase cases[] = {
        {"<a data-x='1'>", {{"data-x", "1"}}},
        {"<a b = \"1\"\n\tc='\"'/>", {{"b", "1"}, {"c", "\""}}},
        {"<a b c=\"1\">", {{"b", ""}, {"c", "1"}}},
        {"<a b=2 c=\"1\">", {{"b", ""}, {"2", ""}, {"c", "1"}}},
        {"<a =\"1\" / c=\"&amp;\">", {{"c", "&amp;"}}},
        {"<a b=\"1 > 2\" c=\"3\">", {{"b", "1 "}}},
        {"<a b='1'b='2'>", {{"b", "1"}, {"b", "2"}}},
        {"<ns:a/>", {}},
    };
    for (const AttributeCase& entry : cases) {
        SCOPED_TRACE(entry.tag);
        const SvgDocument document(entry.tag);
        ASSERT_EQ(document.elements.size(), 1u);
        std::vector<std::pair<std::string, std::string>> found;
        for (const SvgAttribute& attribute : document.elements[0].attributes) {
            found.emplace_back(attribute.name, attribute.value);
            EXPECT_EQ(document.text.substr(attribute.value_start,
                                           attribute.value_end - attribute.value_start),
                      attribute.value);
        }
        EXPECT_EQ(found, entry.attributes);
    }
}

TEST(SvgScanner, JoinsCharacterData) {
    const SvgDocument document("<text>a<![CDATA[b<g>]]>c<b>d</b>e</text>");
    EXPECT_EQ(document.elements[0].text, "ab<g>ce");
    EXPECT_EQ(SvgDocument("<text>a<![CDATA[b]]").elements[0].text, "ab]]");
}

TEST(SvgScanner, KeepsWhatItHasAtATruncation) {
    for (const char* text : {"<svg><g>", "<svg><g>text", "<svg><g><!-- >", "<svg><g><?x",
                             "<svg><g></", "<svg><g><path d=\"M0"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(SvgDocument(text).elements.size(), 2u);
    }
    const SvgDocument unclosed("<svg><g></svg");
    EXPECT_EQ(unclosed.elements[0].end, 0u);
    EXPECT_EQ(unclosed.elements[1].end, unclosed.text.size());
}

TEST(SelectorIndex, MatchesSimpleSelectorsOnly) {
    const SvgDocument document(
        "<svg><g id=\"x\" class=\"a b\"/><g class=\"b b c.d\"/><rect/></svg>");
    const SelectorIndex index(document);
    const auto matches = [&](std::string_view selector) {
        const ElementSet found = index.match_selector(selector);
        return found ? *found : std::vector<std::int32_t>{};
    };
    using Indices = std::vector<std::int32_t>;
    EXPECT_EQ(matches(" g\n"), (Indices{1, 2}));
    EXPECT_EQ(matches("#x"), Indices{1});
    EXPECT_EQ(matches(".b"), (Indices{1, 2}));
    EXPECT_EQ(matches(".c.d"), Indices{2});
    for (const char* none : {"", "#", ".", "svg g", "g,rect", "svg>g", "rect:hover", "*", ".a.b"})
        EXPECT_EQ(matches(none), Indices{}) << none;
}

} // namespace
