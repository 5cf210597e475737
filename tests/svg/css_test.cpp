#include "svg/css.h"
#include "svg/css_declarations.h"
#include "svg/css_scanner.h"
#include "svg/smil.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace Corvel::Svg;

TEST(Declarations, LaterOnesWin) {
    const Declarations found =
        parse_declarations("a:1; b : url(x:y) ;; nothing; :none; a:2; animation-timing-function:t");
    ASSERT_EQ(found.values.size(), 3u);
    EXPECT_EQ(*found.find("a"), "2");
    EXPECT_EQ(*found.find("b"), "url(x:y)");
    EXPECT_EQ(found.timing, "t");
}

TEST(KeyframeOffsets, AreFractions) {
    EXPECT_EQ(parse_keyframe_offsets("from, 25% ,75%,,to"), (std::vector<double>{0, .25, .75, 1}));
    EXPECT_EQ(parse_keyframe_offsets("middle"), std::vector<double>{0});
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

std::vector<AnimationTrack> css_tracks(const std::string& sheet, std::size_t* dropped = nullptr) {
    SvgDocument document("<svg><style>" + sheet + "</style><g/><g/></svg>");
    std::vector<AnimationTrack> tracks;
    parse_css(document, tracks);
    if (dropped)
        *dropped = document.dropped.size();
    return tracks;
}

TEST(Css, ARuleGivesItsTracksInOrder) {
    std::size_t dropped = 0;
    const auto tracks = css_tracks(
        "g{transform:scale(2);animation:k 3s infinite;offset-path:path(\"M0 0L3 4l3 4\")}"
        "@keyframes k{to{opacity:1;transform:none;offset-distance:100%}"
        "from{opacity:0;transform:scale(2);offset-distance:0%}50%{opacity:1}}",
        &dropped);
    EXPECT_EQ(dropped, 1u);
    ASSERT_EQ(tracks.size(), 4u);
    EXPECT_EQ(tracks[0].kind, TrackKind::Matrix);
    EXPECT_FALSE(tracks[0].active);
    EXPECT_EQ(tracks[1].kind, TrackKind::MotionPath);
    EXPECT_EQ(tracks[1].path->lengths, (std::vector<double>{0, 5, 10}));
    EXPECT_EQ(tracks[2].kind, TrackKind::Matrix);
    EXPECT_EQ(tracks[3].kind, TrackKind::Opacity);
    EXPECT_EQ(tracks[3].keys->times, (std::vector<double>{0, .5, 1}));
    EXPECT_EQ(tracks[3].keys->easings.size(), 2u);
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
