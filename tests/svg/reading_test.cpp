#include "svg/css.h"
#include "svg/css_scanner.h"
#include "svg/selector_index.h"
#include "svg/svg_document.h"

#include <gtest/gtest.h>

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

TEST(SvgScanner, ReadsAttributes) {
    const std::pair<const char*, const char*> cases[] = {
        {"<a data-x='1'>", "data-x=1 "},
        {"<a b = \"1\"\n\tc='\"'/>", "b=1 c=\" "},
        {"<a b c=\"1\">", "b= c=1 "},
        {"<a b=2 c=\"1\">", "b= 2= c=1 "},
        {"<a =\"1\" / c=\"&amp;\">", "c=&amp; "},
        {"<a b=\"1 > 2\" c=\"3\">", "b=1  "},
        {"<a b='1'b='2'>", "b=1 b=2 "},
        {"<ns:a/>", ""},
    };
    for (const auto& [tag, expected] : cases) {
        const SvgDocument document(tag);
        ASSERT_EQ(document.elements.size(), 1u) << tag;
        std::string found;
        for (const SvgAttribute& attribute : document.elements[0].attributes) {
            found += std::string(attribute.name) + "=" + std::string(attribute.value) + " ";
            EXPECT_EQ(document.text.substr(attribute.value_start,
                                           attribute.value_end - attribute.value_start),
                      attribute.value);
        }
        EXPECT_EQ(found, expected) << tag;
    }
}

TEST(SvgScanner, JoinsCharacterData) {
    const SvgDocument document("<text>a<![CDATA[b<g>]]>c<b>d</b>e</text>");
    EXPECT_EQ(document.elements[0].text, "ab<g>ce");
    EXPECT_EQ(SvgDocument("<text>a<![CDATA[b]]").elements[0].text, "ab]]");
}

TEST(SvgScanner, KeepsWhatItHasAtATruncation) {
    for (const char* text : {"<svg><g>", "<svg><g>text", "<svg><g><!-- >", "<svg><g><?x",
                             "<svg><g></", "<svg><g></svg", "<svg><g><path d=\"M0"})
        EXPECT_EQ(SvgDocument(text).elements.size(), 2u) << text;
}

TEST(SelectorIndex, MatchesSimpleSelectorsOnly) {
    const SvgDocument document(
        "<svg><g id=\"x\" class=\"a b\"/><g class=\"b b c.d\"/><rect/></svg>");
    const SelectorIndex index(document);
    const auto matches = [&](std::string_view selector) {
        std::string found;
        if (const ElementSet set = index.match_selector(selector))
            for (const std::int32_t element : *set)
                found += std::to_string(element);
        return found;
    };
    EXPECT_EQ(matches(" g\n"), "12");
    EXPECT_EQ(matches("#x"), "1");
    EXPECT_EQ(matches(".b"), "12");
    EXPECT_EQ(matches(".c.d"), "2");
    for (const char* none : {"", "#", ".", "svg g", "g,rect", "svg>g", "rect:hover", "*", ".a.b"})
        EXPECT_EQ(matches(none), "") << none;
}

TEST(Css, NestedBlocksBelongToEachBlockAroundThem) {
    const std::string css = "@keyframes a{@keyframes b{0%{x:1}}1%{x:2}}@keyframes c{";
    const std::vector<CssKeyframes> blocks = scan_keyframes(css);
    ASSERT_EQ(blocks.size(), 2u);
    EXPECT_EQ(css.substr(blocks[0].body_begin, blocks[0].body_end - blocks[0].body_begin),
              "@keyframes b{0%{x:1}}1%{x:2}");
    EXPECT_EQ(css.substr(blocks[1].body_begin, blocks[1].body_end - blocks[1].body_begin),
              "0%{x:1}");
    EXPECT_EQ(without_keyframes(css, blocks), "@keyframes c{");
}

TEST(Css, AnOffsetThatIsNoNumberDoesNotUpsetTheOrder) {
    SvgDocument document("<svg><style>@keyframes "
                         "k{nan%{opacity:9}80%{opacity:2}nan{opacity:8}20%{opacity:1}}g{animation:"
                         "k 1s}</style><g/></svg>");
    std::vector<AnimationTrack> tracks;
    parse_css(document, tracks);
    ASSERT_EQ(tracks.size(), 1u);
    EXPECT_EQ(tracks[0].keys->numbers, (std::vector<double>{1, 2, 9, 8}));
}

} // namespace
