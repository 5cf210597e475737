#include "support/temp_dir.h"
#include "svg/svg_animation.h"

#include <gtest/gtest.h>

#include <ctime>
#include <functional>
#include <random>

namespace {

using Corvel::SvgAnimation;

std::string repeat(const std::string& piece, std::size_t bytes) {
    std::string text;
    text.reserve(bytes + piece.size());
    while (text.size() < bytes)
        text += piece;
    return text;
}

std::string sheet(const std::string& css) {
    return "<svg><style>" + css + "</style><g class=\"a\"/></svg>";
}

// What must not happen is a stack overflow, or time that grows with the square of the size: that
// would take minutes here, so the limit leaves much room for slow machines and sanitizers.
TEST(SvgAnimationSize, HugeDocumentsAreHarmless) {
    constexpr std::size_t large = 1'000'000;
    constexpr std::size_t medium = large / 5;
    const std::string spaces(large, ' ');
    const std::string animate = "<animate attributeName=\"x\" values=\"";
    const std::pair<const char*, std::string> cases[] = {
        {"one rule", sheet("g{" + std::string(5 * large, 'x') + "}")},
        {"no brace", sheet(std::string(large, 'x'))},
        {"open braces", sheet(repeat("g{", large))},
        {"closing braces", sheet(std::string(large, '}'))},
        {"unclosed keyframes", sheet(repeat("@keyframes a{", large))},
        {"nested keyframes", sheet(repeat("@keyframes a{", large / 2) + "0%{opacity:1}" +
                                   std::string(large / 25, '}') + "g{animation:a 1s}")},
        {"keyframes heads", sheet(repeat("@keyframes ", large))},
        {"spaces in a head", sheet("@keyframes" + spaces + "@keyframes")},
        {"many keyframes, many rules", sheet("@keyframes a{" + repeat("1%{opacity:1}", large / 2) +
                                             "}" + repeat("g{animation:a 1s}", large / 2))},
        {"many rules, many elements", "<svg><style>" + repeat(".a{transform:scale(2)}", medium) +
                                          "</style>" + repeat("<g class=\"a\"/>", medium) +
                                          "</svg>"},
        {"spaces for a number", sheet("g{transform:rotate(" + spaces + "x)}")},
        {"spaces for a value", "<svg><g>" + animate + spaces + "x;1\"/></g></svg>"},
        {"signs", sheet("g{transform:rotate(" + std::string(large, '-') + ")}")},
        {"unclosed calls", sheet("g{transform:" + repeat("rotate(", large) + "}")},
        {"offset path", sheet("@keyframes a{from{offset-distance:0}to{offset-distance:100%}}"
                              "g{animation:a 1s;offset-path:path('M0 0" +
                              repeat("C1 1 2 2 3 3", medium) + "')}")},
        {"deep nesting", repeat("<g>", large)},
        {"deep nesting, closed", repeat("<g>", medium) + repeat("</g>", medium * 4 / 3)},
        {"attributes", "<svg " + repeat("a=\"1\" ", large) + "/>"},
        {"animations of one attribute",
         "<svg><g>" + repeat(animate + "a;a\"/>", medium) + "</g></svg>"},
    };
    for (const auto& [name, source] : cases) {
        const std::clock_t start = std::clock();
        const SvgAnimation animation(source);
        EXPECT_LT(animation.frame_at(500).size(), 2 * source.size() + 100) << name;
        EXPECT_LT(std::clock() - start, 10 * CLOCKS_PER_SEC) << name;
    }
}

std::vector<std::string> shipped_icons() {
    std::vector<std::string> sources;
    for (const char* name : {"icons/spinner", "icons/building", "ext/corvel/icons/update"})
        sources.push_back(TestSupport::read_file(std::string(SOURCE_ROOT) + "/" + name + ".svg"));
    return sources;
}

TEST(ShippedIcons, TheAnimatedOnesMove) {
    for (const std::string& source : shipped_icons()) {
        SCOPED_TRACE(source.substr(0, 200));
        const SvgAnimation animation(source);
        ASSERT_TRUE(animation.is_animated());
        EXPECT_NE(animation.frame_at(100), animation.frame_at(300));
        // A loop closes without a jump.
        EXPECT_EQ(animation.frame_at(0), animation.frame_at(animation.duration()));
        EXPECT_EQ(animation.frame_at(100).find("<anim"), std::string::npos);
        EXPECT_EQ(animation.frame_at(100).find("<style"), std::string::npos);
    }
}

// Frames of damaged documents depend on nothing but document and time.
TEST(SvgAnimation, SurvivesDamagedDocuments) {
    std::mt19937 random(23);
    std::vector<std::string> seeds = shipped_icons();
    seeds.push_back(sheet("@keyframes k{0%{offset-distance:0%}to{offset-distance:9%}}"
                          ".a{animation:k 1s;offset-path:path('M0 0Q1 2 3 4zh5')}"));
    const std::string pieces[] = {"<", ">", "/>",  "</", "\"",   "'",   "=", "{",   "}",
                                  ";", "%", "nan", "-",  "<!--", "]]>", "@", "inf", "1e999"};
    for (int round = 0; round < 5'000; ++round) {
        std::string text = seeds[random() % seeds.size()];
        for (auto edits = 1 + random() % 6; edits > 0; --edits) {
            const std::size_t at = random() % (text.size() + 1);
            if (random() % 2 == 0)
                text.insert(at, pieces[random() % std::size(pieces)]);
            else
                text.erase(at, random() % 12);
        }
        const SvgAnimation animation(text);
        if (!animation.is_animated())
            continue;
        const std::string later = SvgAnimation(text).frame_at(333.3);
        for (const double ms : {0.0, 1e9, -5.0})
            animation.frame_at(ms);
        ASSERT_EQ(animation.frame_at(333.3), later) << text;
    }
}

} // namespace
