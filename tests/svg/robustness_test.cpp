#include "svg/frame_by_edits.h"
#include "svg/svg_animation.h"

#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <vector>

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

// Hostile documents are read and give frames in no time. What must not happen is a stack overflow,
// or time that grows with the square of the size: that would take minutes here, so the limit leaves
// much room for slow machines and sanitizers.
TEST(SvgAnimationSize, HugeDocumentsAreHarmless) {
    constexpr std::size_t large = 1'000'000;
    constexpr std::size_t medium = large / 5;
    const std::pair<const char*, std::function<std::string()>> cases[] = {
        {"one rule", [] { return sheet("g{" + std::string(5 * large, 'x') + "}"); }},
        {"no brace", [] { return sheet(std::string(large, 'x')); }},
        {"open braces", [] { return sheet(repeat("g{", large)); }},
        {"closing braces", [] { return sheet(std::string(large, '}')); }},
        {"unclosed keyframes", [] { return sheet(repeat("@keyframes a{", large)); }},
        {"nested keyframes",
         [] {
             return sheet(repeat("@keyframes a{", large / 2) + "0%{opacity:1}" +
                          std::string(large / 25, '}') + "g{animation:a 1s}");
         }},
        {"keyframes heads", [] { return sheet(repeat("@keyframes ", large)); }},
        {"spaces in a head",
         [] { return sheet("@keyframes" + std::string(large, ' ') + "@keyframes"); }},
        {"many keyframes, many rules",
         [] {
             return sheet("@keyframes a{" + repeat("1%{opacity:1}", large / 2) + "}" +
                          repeat("g{animation:a 1s}", large / 2));
         }},
        {"many rules, many elements",
         [] {
             return "<svg><style>" + repeat(".a{transform:scale(2)}", medium) + "</style>" +
                    repeat("<g class=\"a\"/>", medium) + "</svg>";
         }},
        {"spaces for a number",
         [] { return sheet("g{transform:rotate(" + std::string(large, ' ') + "x)}"); }},
        {"spaces for an animated number",
         [] {
             return "<svg><g><animate attributeName=\"x\" values=\"" + std::string(large, ' ') +
                    "x;1\"/></g></svg>";
         }},
        {"signs", [] { return sheet("g{transform:rotate(" + std::string(large, '-') + ")}"); }},
        {"unclosed calls", [] { return sheet("g{transform:" + repeat("rotate(", large) + "}"); }},
        {"offset path",
         [] {
             return sheet("@keyframes a{from{offset-distance:0}to{offset-distance:100%}}"
                          "g{animation:a 1s;offset-path:path('M0 0" +
                          repeat("C1 1 2 2 3 3", medium) + "')}");
         }},
        {"deep nesting", [] { return repeat("<g>", large); }},
        {"deep nesting, closed",
         [] { return repeat("<g>", medium) + repeat("</g>", medium * 4 / 3); }},
        {"attributes", [] { return "<svg " + repeat("a=\"1\" ", large) + "/>"; }},
        {"animations of one attribute",
         [] {
             return "<svg><g>" + repeat("<animate attributeName=\"x\" values=\"a;a\"/>", medium) +
                    "</g></svg>";
         }},
    };
    for (const auto& [name, make] : cases) {
        SCOPED_TRACE(name);
        const std::string source = make();
        const std::clock_t start = std::clock();
        const SvgAnimation animation(source);
        EXPECT_LT(animation.frame_at(500).size(), 2 * source.size() + 100);
        EXPECT_LT(std::clock() - start, 10 * CLOCKS_PER_SEC);
    }
}

std::vector<std::string> shipped_icons() {
    std::vector<std::string> sources;
    for (const char* name : {"spinner", "update", "building"}) {
        const auto path =
            std::filesystem::path(SOURCE_ROOT) / "icons" / (std::string(name) + ".svg");
        std::ifstream file(path);
        sources.emplace_back(std::istreambuf_iterator<char>(file),
                             std::istreambuf_iterator<char>());
    }
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

TEST(SvgAnimation, SurvivesDamagedDocuments) {
    std::mt19937 random(23);
    std::vector<std::string> seeds = shipped_icons();
    seeds.push_back(sheet("@keyframes k{0%{offset-distance:0%}to{offset-distance:9%}}"
                          ".a{animation:k 1s;offset-path:path('M0 0Q1 2 3 4zh5')}"));
    const std::vector<std::string> pieces = {"<",   ">",     "/>", "</",   "\"",  "'",
                                             "=",   "{",     "}",  ";",    "%",   "nan",
                                             "inf", "1e999", "-",  "<!--", "]]>", "@"};
    for (int round = 0; round < 5'000; ++round) {
        std::string text = seeds[random() % seeds.size()];
        for (auto edits = 1 + random() % 6; edits > 0; --edits) {
            const std::size_t at = random() % (text.size() + 1);
            if (random() % 2 == 0)
                text.insert(at, pieces[random() % pieces.size()]);
            else
                text.erase(at, random() % 12);
        }
        const SvgAnimation animation(text);
        for (const double ms : {0.0, 333.3, 1e9, -5.0}) {
            ASSERT_EQ(animation.frame_at(ms), frame_by_edits(text, ms)) << text;
        }
    }
}

} // namespace
