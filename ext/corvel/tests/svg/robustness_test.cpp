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
        {"nested keyframes, each named", sheet([] {
             std::string css;
             for (int i = 0; i < 3'000; ++i)
                 css += "@keyframes a" + std::to_string(i) + "{";
             css += repeat("0%{opacity:1;transform:rotate(1)}", medium) + std::string(3'000, '}');
             for (int i = 0; i < 3'000; ++i)
                 css += "g{animation:a" + std::to_string(i) + " 1s}";
             return css;
         }())},
        {"additive transforms", "<svg><g transform=\"" + repeat("rotate(1) ", medium) + "\">" +
                                    repeat("<animateTransform type=\"rotate\" additive=\"sum\" "
                                           "values=\"1;2\"/>",
                                           medium) +
                                    "</g></svg>"},
        {"one animation of many keys, many elements",
         "<svg><style>@keyframes a{" + repeat("1%{opacity:1}", medium) + "}.a{animation:a 1s}" +
             "</style>" + repeat("<g class=\"a\"/>", medium) + "</svg>"},
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

// Frames of damaged documents depend on nothing but document and time.
TEST(SvgAnimation, SurvivesDamagedDocuments) {
    std::mt19937 random(23);
    const std::string seeds[] = {
        TestSupport::read_file(SOURCE_ROOT "/icons/update.svg"),
        R"(<svg viewBox="0 0 24 24"><g><path d="M2 2h4v4z"/><animateTransform type="rotate" )"
        R"(attributeName="transform" values="0 12 12;360 12 12" dur="1s"/></g></svg>)",
        sheet("@keyframes k{0%{offset-distance:0%}to{offset-distance:9%}}"
              ".a{animation:k 1s;offset-path:path('M0 0Q1 2 3 4zh5')}")};
    const std::string pieces[] = {"<", ">", "/>",  "</", "\"",   "'",   "=", "{",   "}",
                                  ";", "%", "nan", "-",  "<!--", "]]>", "@", "inf", "1e999"};
    for (int round = 0; round < 5'000; ++round) {
        std::string text = seeds[random() % std::size(seeds)];
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
