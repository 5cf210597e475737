#include "svg/svg_animation.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

using Corvel::SvgAnimation;

struct FrameCase {
    const char* name;
    std::string source;
    double ms;
    std::string expected;
};

void PrintTo(const FrameCase& frame, std::ostream* out) {
    *out << frame.name;
}

class Frame : public testing::TestWithParam<FrameCase> {};

TEST_P(Frame, IsTheSourceWithTheAnimatedValues) {
    const FrameCase& frame = GetParam();
    EXPECT_EQ(SvgAnimation(frame.source).frame_at(frame.ms), frame.expected);
}

std::string name_of(const testing::TestParamInfo<FrameCase>& info) {
    return info.param.name;
}

// An element with one SMIL animation in it, and the frame that is expected of it.
std::string smil(const std::string& tag, const std::string& animation) {
    return "<svg><" + tag + "><" + animation + "/></rect></svg>";
}
std::string plain(const std::string& tag) {
    return "<svg><" + tag + "></rect></svg>";
}

std::string css(const std::string& sheet, const std::string& tag = "rect id=\"a\"") {
    return "<svg><style>" + sheet + "</style><" + tag + "/></svg>";
}
std::string styled(const std::string& tag) {
    return "<svg><" + tag + "/></svg>";
}

const std::string turn = "animateTransform type=\"rotate\" from=\"0 12 12\" to=\"360 12 12\" "
                         "dur=\"2s\" repeatCount=\"indefinite\"";

const FrameCase smil_cases[] = {
    {"RotateStartsAsIdentity", smil("rect", turn), 0,
     plain("rect transform=\"matrix(1,0,0,1,0,0)\"")},
    {"RotateAboutACentre", smil("rect", turn), 500,
     plain("rect transform=\"matrix(6.12323e-17,1,-1,6.12323e-17,24,0)\"")},
    {"RepeatsFromTheStart", smil("rect", turn), 2000,
     plain("rect transform=\"matrix(1,0,0,1,0,0)\"")},
    {"RotateAboutTheOriginWithTwoNumbers",
     smil("rect", "animateTransform type=\"rotate\" values=\"0 5; 180 5\" dur=\"1s\""), 1000,
     plain("rect transform=\"matrix(-1,1.22465e-16,-1.22465e-16,-1,0,0)\"")},
    {"UnknownTypeRotates", smil("rect", "animateTransform type=\"skewX\" values=\"0;0\""), 5,
     plain("rect transform=\"matrix(1,0,0,1,0,0)\"")},
    {"TranslateReplacesInPlace",
     smil("rect x=\"1\" transform='scale(2)' y=\"2\"",
          "animate attributeName=\"transform\" type=\"translate\" from=\"0\" to=\"8 4\" dur=\"2\""),
     1, plain("rect x=\"1\" transform='matrix(1,0,0,1,4,0)' y=\"2\"")},
    {"TranslateHoldsItsEnd",
     smil("rect", "animateTransform type=\"translate\" from=\"0 0\" to=\"8 4\" dur=\"100ms\""),
     5000, plain("rect transform=\"matrix(1,0,0,1,8,4)\"")},
    {"ScaleWithOneNumber",
     smil("rect", "animateTransform type=\"scale\" from=\"1\" to=\"3\" dur=\"1s\""), 250,
     plain("rect transform=\"matrix(1.5,0,0,1.5,0,0)\"")},
    {"ScaleWithoutNumbers", smil("rect", "animateTransform type=\"scale\" from=\"\" to=\"\""), 250,
     plain("rect transform=\"matrix(1,0,0,1,0,0)\"")},
    {"AdditiveKeepsTheOwnTransform",
     smil("rect transform=\"translate(10 20) scale(2)\"",
          "animateTransform type=\"translate\" from=\"0 0\" to=\"4 0\" additive=\"sum\""),
     500, plain("rect transform=\"matrix(2,0,0,2,14,20)\"")},
    {"OpacityIsAddedBehindTheName",
     smil("rect id=\"a\"", "animate attributeName=\"opacity\" values=\"0;1\" dur=\"1s\""), 500,
     plain("rect opacity=\"0.5\" id=\"a\"")},
    {"AttributeIsReplaced",
     smil("rect width=\"10\"", "animate attributeName=\"width\" from=\"10\" by=\"5 7\" dur=\"1s\""),
     200, plain("rect width=\"11\"")},
    {"UnquotedValueGetsTheNumberAtItsPlace",
     smil("rect x=3 y=\"1\"", "animate attributeName=\"x\" values=\"7;7\""), 0,
     plain("rect x=73 y=\"1\"")},
    {"KeyTimes",
     smil("rect", "animate attributeName=\"x\" values=\"0;10;20\" keyTimes=\"0;0.8;1\" dur=\"1s\""),
     400, plain("rect x=\"5\"")},
    {"KeyTimesOfAnotherCountAreEven",
     smil("rect", "animate attributeName=\"x\" values=\"0;10\" keyTimes=\"0;0.2;1\" dur=\"1s\""),
     500, plain("rect x=\"5\"")},
    {"KeyTimesThatDoNotStartAtZero",
     smil("rect", "animate attributeName=\"x\" values=\"3;10\" keyTimes=\"0.5;1\" dur=\"1s\""), 400,
     plain("rect x=\"3\"")},
    {"Spline",
     smil("rect", "animate attributeName=\"x\" values=\"0;100;200\" calcMode=\"spline\" "
                  "keySplines=\"0.42 0 1 1; 1 2 3\" dur=\"2s\""),
     500, plain("rect x=\"31.5357\"")},
    {"SplineOfThreeNumbersIsLinear",
     smil("rect", "animate attributeName=\"x\" values=\"0;100;200\" calcMode=\"spline\" "
                  "keySplines=\"0.42 0 1 1; 1 2 3\" dur=\"2s\""),
     1500, plain("rect x=\"150\"")},
    {"SplinesNeedTheirMode",
     smil("rect", "animate attributeName=\"x\" values=\"0;100\" keySplines=\"0.42 0 1 1\""), 500,
     plain("rect x=\"50\"")},
    {"FurtherNumbersFallAway",
     smil("rect", "animateTransform type=\"translate\" values=\"0 0;10\" dur=\"1s\""), 500,
     plain("rect transform=\"matrix(1,0,0,1,5,0)\"")},
    {"NoDurationIsTheEnd",
     smil("rect",
          "animate attributeName=\"x\" values=\"1;2\" dur=\"0s\" repeatCount=\"indefinite\""),
     1, plain("rect x=\"2\"")},
    {"NumberedRepeatPlaysOnce",
     smil("rect", "animate attributeName=\"x\" values=\"1;2\" dur=\"1s\" repeatCount=\"3\""), 1500,
     plain("rect x=\"2\"")},
    {"OneValueIsDroppedWithoutATrack",
     smil("rect x=\"4\"", "animate attributeName=\"x\" to=\"2\" dur=\"1s\""), 500,
     plain("rect x=\"4\"")},
    {"ColoursStay", smil("rect", "animate attributeName=\"fill\" values=\"red;blue\""), 500,
     smil("rect", "animate attributeName=\"fill\" values=\"red;blue\"")},
    {"MotionElementsStay", smil("rect", "animateMotion path=\"M0 0L9 9\""), 500,
     smil("rect", "animateMotion path=\"M0 0L9 9\"")},
    {"RootAnimationIsNoTrack", "<animate attributeName=\"x\" values=\"1;2\"/>", 500,
     "<animate attributeName=\"x\" values=\"1;2\"/>"},
    {"LaterTrackWins",
     "<svg><rect><animate attributeName=\"width\" values=\"1;1\"/>"
     "<animate attributeName=\"width\" values=\"2;2\"/></rect></svg>",
     10, "<svg><rect width=\"2\"></rect></svg>"},
    {"ATrackWithoutNumbersLeavesTheEarlierOne",
     "<svg><rect width=\"9\"><animate attributeName=\"width\" values=\"1;1\"/>"
     "<animate attributeName=\"width\" values=\"a;2\"/></rect></svg>",
     0, "<svg><rect width=\"1\"></rect></svg>"},
    {"ATrackWithoutNumbersLeavesTheSource",
     smil("rect width=\"9\"", "animate attributeName=\"width\" values=\"a;2\""), 0,
     plain("rect width=\"9\"")},
    {"ATrackWithoutNumbersAddsNothing",
     smil("rect", "animate attributeName=\"opacity\" values=\"a;2\" dur=\"1s\""), 0, plain("rect")},
    {"ATrackWithNumbersAtItsEnd",
     smil("rect", "animate attributeName=\"opacity\" values=\"a;2\" dur=\"1s\""), 1000,
     plain("rect opacity=\"2\"")},
    {"SeveralPropertiesInTheirOrder",
     "<svg><rect y=\"0\"><animate attributeName=\"y\" values=\"1;1\"/>"
     "<animate attributeName=\"x\" values=\"2;2\"/>"
     "<animate attributeName=\"cx\" values=\"3;3\"/>"
     "<animate attributeName=\"opacity\" values=\"0.5;0.5\"/>"
     "<animateTransform type=\"scale\" values=\"2;2\"/></rect></svg>",
     10,
     "<svg><rect transform=\"matrix(2,0,0,2,0,0)\" opacity=\"0.5\" cx=\"3\" x=\"2\" y=\"1\">"
     "</rect></svg>"},
    {"WhatIsInADroppedElementGoesWithIt",
     "<svg><animate attributeName=\"x\" values=\"1;1\"><g><animate attributeName=\"y\" "
     "values=\"1;1\"/></g></animate></svg>",
     10, "<svg x=\"1\"></svg>"},
    {"AnElementThatIsNeverClosedStays", "<svg><rect><animate attributeName=\"x\" values=\"1;1\">",
     1, "<svg><rect x=\"1\"><animate attributeName=\"x\" values=\"1;1\">"},
};

INSTANTIATE_TEST_SUITE_P(Smil, Frame, testing::ValuesIn(smil_cases), name_of);

const std::string spin = "@keyframes spin{to{transform:rotate(180deg)}from{transform:none}}";

const FrameCase css_cases[] = {
    {"Shorthand", css(spin + "#a{animation:spin 2s linear infinite}"), 3000,
     styled("rect transform=\"matrix(0,6.12323e-17,-6.12323e-17,0,0,0)\" id=\"a\"")},
    {"MatrixIsInterpolatedByNumber",
     css("@keyframes m{0%{transform:scale(1)}100%{transform:scale(3) translate(2,4)}}"
         "rect{animation:m 1s}"),
     500, styled("rect transform=\"matrix(2,0,0,2,3,6)\" id=\"a\"")},
    {"FirstTimeWins", css(spin + "#a{animation:1s spin 9s}"), 1000,
     styled("rect transform=\"matrix(-1,1.22465e-16,-1.22465e-16,-1,0,0)\" id=\"a\"")},
    {"LongHandAndOnce",
     css("@-webkit-keyframes o { from, 50% {opacity:0} 100% {opacity:1} }"
         ".b{animation-name:o;animation-duration:4s}",
         "rect class=\"a b\""),
     3000, styled("rect opacity=\"0.5\" class=\"a b\"")},
    {"WebkitShorthand", css("@keyframes o{from{opacity:0}to{opacity:1}}#a{-webkit-animation:o 2s}"),
     9000, styled("rect opacity=\"1\" id=\"a\"")},
    {"TimingOfAKeyframe",
     css("@keyframes o{0%{opacity:0;animation-timing-function:cubic-bezier(0.42,0,1,1)}"
         "50%{opacity:1;animation-timing-function:ease}to{opacity:0}}#a{animation:o 2s}"),
     500, styled("rect opacity=\"0.315357\" id=\"a\"")},
    {"KeywordTimingIsLinear",
     css("@keyframes o{0%{opacity:0;animation-timing-function:cubic-bezier(0.42,0,1,1)}"
         "50%{opacity:1;animation-timing-function:ease}to{opacity:0}}#a{animation:o 2s}"),
     1250, styled("rect opacity=\"0.75\" id=\"a\"")},
    {"MotionPath",
     css("@keyframes go{from{offset-distance:0%}to{offset-distance:100%}}"
         "#a{offset-path:path('M10 10H30V50');animation:go 6s}"),
     3000, styled("rect transform=\"matrix(1,0,0,1,30,20)\" id=\"a\"")},
    {"MotionWithoutAPathIsNone",
     css("@keyframes go{from{offset-distance:0%}to{offset-distance:100%}}"
         "#a{offset-path:none;animation:go 6s}"),
     3000, styled("rect id=\"a\"")},
    {"StaticTransformAboutItsOrigin",
     css("#a{transform:rotate(180);transform-origin:5px 5px}" + spin + "svg{animation:spin 1s}"), 0,
     "<svg transform=\"matrix(1,0,0,1,0,0)\">"
     "<rect transform=\"matrix(-1,1.22465e-16,-1.22465e-16,-1,10,10)\" id=\"a\"/></svg>"},
    {"KeyframesWinOverTheStaticTransform", css(spin + "#a{transform:scale(7);animation:spin 1s}"),
     0, styled("rect transform=\"matrix(1,0,0,1,0,0)\" id=\"a\"")},
    {"OneKeyframeIsNoTrack", css("@keyframes o{50%{opacity:0}}#a{animation:o 1s}"), 500,
     styled("rect id=\"a\"")},
    {"LaterBlockReplacesTheEarlier",
     css("@keyframes o{from{opacity:0}to{opacity:0}}@keyframes o{from{opacity:1}to{opacity:1}}"
         "@keyframes o{}#a{animation:o 1s}"),
     500, styled("rect opacity=\"1\" id=\"a\"")},
    {"UnknownKeyframes", css("#a{animation:nothing 1s;opacity:0.2}"), 500, styled("rect id=\"a\"")},
    {"SelectorListsMatchNothing", css(spin + "#a, svg{transform:scale(2);animation:spin 1s}"), 0,
     styled("rect id=\"a\"")},
    {"OneRuleMovesSeveralElements",
     "<svg><style>@keyframes o{from{opacity:0}to{opacity:1}}g{animation:o 1s}</style>"
     "<g/><g opacity=\"0.9\"/></svg>",
     250, "<svg><g opacity=\"0.25\"/><g opacity=\"0.25\"/></svg>"},
    {"CssWinsOverSmil",
     "<svg><rect><animate attributeName=\"opacity\" values=\"0;0\"/></rect><style>"
     "@keyframes o{from{opacity:1}to{opacity:1}}</style><style>rect{animation:o 1s}</style></svg>",
     0, "<svg><rect opacity=\"1\"></rect></svg>"},
    {"CharacterDataSections",
     "<svg><style><![CDATA[@keyframes o{from{opacity:1}to{opacity:1}}g>g{}]]>g{animation:o 1s}"
     "</style><g/></svg>",
     0, "<svg><g opacity=\"1\"/></svg>"},
    {"RuleBehindAnUnclosedBlock", css("#a{transform:scale(2)}@keyframes x{from{opacity:1}"), 0,
     styled("rect transform=\"matrix(2,0,0,2,0,0)\" id=\"a\"")},
};

INSTANTIATE_TEST_SUITE_P(Css, Frame, testing::ValuesIn(css_cases), name_of);

TEST(SvgAnimation, KnowsWhetherItMovesAndForHowLong) {
    const SvgAnimation still("<svg><style>g{transform:scale(2)}</style><g/></svg>");
    EXPECT_FALSE(still.is_animated());
    EXPECT_EQ(still.duration(), 0);

    const SvgAnimation moving("<svg><style>@keyframes o{from{opacity:0}to{opacity:1}}"
                              "g{animation:o 1.5s}</style><g>" +
                              smil("rect", turn) + "</g></svg>");
    EXPECT_TRUE(moving.is_animated());
    EXPECT_EQ(moving.duration(), 2000);
}

TEST(SvgAnimation, IsNotChangedByItsFrames) {
    SvgAnimation original(smil("rect", turn));
    const std::string first = original.frame_at(700);
    original.frame_at(1900);
    const SvgAnimation moved = std::move(original);
    EXPECT_EQ(moved.frame_at(700), first);
}

} // namespace
