#include "svg/css.h"
#include "svg/css_declarations.h"
#include "svg/css_scanner.h"
#include "svg/selector_index.h"
#include "svg/smil.h"
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

TEST(Css, LaterDeclarationsWin) {
    const Declarations found =
        parse_declarations("a:1; b : url(x:y) ;; nothing; :none; a:2; animation-timing-function:t");
    ASSERT_EQ(found.values.size(), 3u);
    EXPECT_EQ(*found.find("a"), "2");
    EXPECT_EQ(*found.find("b"), "url(x:y)");
    EXPECT_EQ(found.timing, "t");
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

std::vector<AnimationTrack> css_tracks(const std::string& sheet) {
    SvgDocument document("<svg><style>" + sheet + "</style><g/><g/></svg>");
    std::vector<AnimationTrack> tracks;
    parse_css(document, tracks);
    EXPECT_EQ(document.dropped.size(), 1u);
    return tracks;
}

TEST(Css, ARuleGivesItsTracksInOrder) {
    const auto tracks = css_tracks(
        "g{transform:scale(2);animation:k 3s infinite;offset-path:path(\"M0 0L3 4l3 4\")}"
        "@keyframes k{to{opacity:1;transform:none;offset-distance:100%}"
        "from{opacity:0;transform:scale(2);offset-distance:0%}50%{opacity:1}}");
    ASSERT_EQ(tracks.size(), 4u);
    EXPECT_EQ(tracks[0].kind, TrackKind::Matrix);
    EXPECT_FALSE(tracks[0].active);
    EXPECT_EQ(tracks[1].kind, TrackKind::MotionPath);
    EXPECT_EQ(tracks[1].path->lengths, (std::vector<double>{0, 5, 10}));
    EXPECT_EQ(tracks[2].kind, TrackKind::Matrix);
    EXPECT_EQ(tracks[3].kind, TrackKind::Opacity);
    EXPECT_EQ(tracks[3].keys->times, (std::vector<double>{0, .5, 1}));
    for (const AnimationTrack& track : tracks) {
        EXPECT_EQ(track.elements->size(), 2u);
        EXPECT_EQ(track.duration, 3000);
        EXPECT_TRUE(track.repeat);
    }
}

TEST(Css, AnOffsetThatIsNoNumberDoesNotUpsetTheOrder) {
    const auto tracks = css_tracks(
        "@keyframes k{nan%{opacity:9}80%{opacity:2}nan{opacity:8}20%{opacity:1}}g{animation:k 1s}");
    ASSERT_EQ(tracks.size(), 1u);
    EXPECT_EQ(tracks[0].keys->numbers, (std::vector<double>{1, 2, 9, 8}));
}

TEST(Smil, KnowsTheAttributesItCanAnimate) {
    for (const char* name : {"x", "ry", "stroke-dashoffset", "offset", "fill-opacity"})
        EXPECT_TRUE(is_animatable_attribute(name)) << name;
    for (const char* name : {"", "fill", "X", "d", "opacity ", "fx"})
        EXPECT_FALSE(is_animatable_attribute(name)) << name;
}

} // namespace
