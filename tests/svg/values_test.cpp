#include "svg/affine.h"
#include "svg/easing.h"
#include "svg/svg_path.h"
#include "svg/svg_values.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace Corvel::Svg;

std::string random_text(std::mt19937& random, std::string_view alphabet, std::size_t longest) {
    std::string text(random() % (longest + 1), ' ');
    for (char& c : text)
        c = alphabet[random() % alphabet.size()];
    return text;
}

/// Both numbers are the same to the last bit, or both are NaN.
bool same(double left, double right) {
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right) ||
           (std::isnan(left) && std::isnan(right));
}

void expect_like_strtod(const std::string& text) {
    char* end = nullptr;
    const double expected = std::strtod(text.c_str(), &end);
    const auto length = static_cast<std::size_t>(end - text.c_str());
    std::size_t position = 0;
    const auto number = scan_number(text, position);
    ASSERT_EQ(number.has_value(), length > 0) << "'" << text << "'";
    if (number) {
        EXPECT_EQ(position, length) << "'" << text << "'";
        EXPECT_TRUE(same(*number, expected)) << "'" << text << "' " << *number << " " << expected;
    }
}

TEST(ScanNumber, ReadsAsStrtodDoes) {
    const std::string texts[] = {"",
                                 " ",
                                 "1",
                                 " \t\v\f+1.5e3x",
                                 "-.5",
                                 ".",
                                 "-",
                                 "+-1",
                                 "--1",
                                 "1.",
                                 "1.e2",
                                 "1e",
                                 "1e+",
                                 "0x",
                                 "0x1.8p1",
                                 "0X.8",
                                 "0x.",
                                 "-0x1p",
                                 "0xg",
                                 "0x-1",
                                 "0xinf",
                                 "inf",
                                 "-Infinity",
                                 "infi",
                                 "nan",
                                 "-NaN(12a)",
                                 "nan(",
                                 "nan(-)",
                                 "1e400",
                                 "-1e400",
                                 "1e-400",
                                 "0e99999999999",
                                 "0.000001e310",
                                 "100000e-330",
                                 "1e99999999999999999999",
                                 "1e-99999999999999999999",
                                 "0x1p5000",
                                 "0x1p-5000",
                                 "4.9e-324",
                                 "2e-324",
                                 "1.7976931348623159e308",
                                 "1,5"};
    for (const std::string& text : texts)
        expect_like_strtod(text);
    std::mt19937 random(7);
    for (int i = 0; i < 50'000; ++i)
        expect_like_strtod(random_text(random, "0123456789..eE+--xX pPinfINFaA(", 12));
}

TEST(ScanNumber, DoesNotFollowTheLocale) {
    const char* const comma_locales[] = {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"};
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* name : comma_locales)
        std::setlocale(LC_NUMERIC, name);
    EXPECT_EQ(parse_number("1.5"), 1.5);
    EXPECT_EQ(format_number(1.5), "1.5");
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(ParseNumbers, SkipsWhatIsNoNumber) {
    using Numbers = std::vector<double>;
    EXPECT_EQ(parse_numbers("50% 20px,-3;.5-.5"), (Numbers{50, 20, -3, .5, -.5}));
    EXPECT_EQ(parse_numbers("a 1e b2"), (Numbers{1, 2}));
    EXPECT_EQ(parse_numbers("- -"), Numbers{});
}

TEST(ParseTime, KnowsItsUnits) {
    const std::pair<const char*, double> cases[] = {{"1.5s", 1500}, {"200ms", 200}, {" 2 ", 2},
                                                    {"s", 0},       {"ms", 0},      {"1ms\n", 1},
                                                    {"-1s", -1000}, {"x", 0},       {"2min", 2}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(parse_time(text), expected) << text;
}

TEST(FormatNumber, WritesAsPrintfDoes) {
    std::mt19937_64 random(11);
    const auto expect_like_printf = [](double number) {
        char buffer[64];
        std::snprintf(buffer, sizeof buffer, "%.6g", number);
        EXPECT_EQ(format_number(number), buffer);
    };
    for (const double number : {0.0, -0.0, 1.0, 0.1, 1e5, 999999.5, 1e6, 1e-4, 1e-5, HUGE_VAL})
        expect_like_printf(number);
    std::uniform_real_distribution<double> usual(-1000, 1000);
    for (int i = 0; i < 10'000; ++i) {
        expect_like_printf(usual(random));
        expect_like_printf(std::bit_cast<double>(random()));
    }
}

TEST(ParseTransform, MultipliesTheList) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "matrix(1,0,0,1,0,0)"},
        {"none", "matrix(1,0,0,1,0,0)"},
        {"matrix(1 2 3 4 5 6)", "matrix(1,2,3,4,5,6)"},
        {"matrix(1 2 3 4 5)", "matrix(1,0,0,1,0,0)"},
        {"translate(5)", "matrix(1,0,0,1,5,0)"},
        {"translate()", "matrix(1,0,0,1,0,0)"},
        {"scale(2)", "matrix(2,0,0,2,0,0)"},
        {"rotate(90)", "matrix(6.12323e-17,1,-1,6.12323e-17,0,0)"},
        {"rotate(90 10)", "matrix(6.12323e-17,1,-1,6.12323e-17,0,0)"},
        {"rotate(90, 10, 0)", "matrix(6.12323e-17,1,-1,6.12323e-17,10,-10)"},
        {"translate(10px, 0px) scale (2 3)", "matrix(2,0,0,3,10,0)"},
        {"scale(2,3)translate(10)", "matrix(2,0,0,3,20,0)"},
        {"skewX(30) translateX(4) scale3d(2)", "matrix(1,0,0,1,0,0)"},
        {"scale(2", "matrix(1,0,0,1,0,0)"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(format_matrix(parse_transform(text)), expected) << text;
}

std::string path_text(const char* data) {
    std::string text;
    for (const Point& point : parse_path(data))
        text += format_number(point.x) + ',' + format_number(point.y) + ' ';
    return text;
}

TEST(ParsePath, FollowsTheCommands) {
    const std::pair<const char*, const char*> cases[] = {
        {"M0 0 10 10", "0,0 10,10 "},
        {"m1 1 2 2L0 0", "1,1 3,3 0,0 "},
        {"M1 2H5V7h-1v-1", "1,2 5,2 5,7 4,7 4,6 "},
        {"M1,2l3,0zl1,1", "1,2 4,2 1,2 2,3 "},
        {"M0 0z5 6L1 1", "0,0 0,0 1,1 "},
        {"5 6M1 1", "1,1 "},
        {"M0 0C1 1 2 2", "0,0 "},
        {"M0 0L5M7 7", "0,0 7,7 "},
        {"M0 0S1 1L2 2", "0,0 1,1 2,2 "},
        {"M-.5.5-1e1 2", "-0.5,0.5 -10,2 "},
        {"", ""},
    };
    for (const auto& [data, expected] : cases)
        EXPECT_EQ(path_text(data), expected) << data;
}

TEST(ParsePath, FlattensCurves) {
    const std::vector<Point> cubic = parse_path("M10 0c0 8 8 8 8 0L0 0");
    ASSERT_EQ(cubic.size(), 18u);
    EXPECT_DOUBLE_EQ(cubic[8].x, 14);
    EXPECT_DOUBLE_EQ(cubic[8].y, 6);
    EXPECT_EQ(cubic[16].x, 18);
    const std::vector<Point> quadratic = parse_path("M0 0Q4 8 8 0 12 -8 16 0");
    ASSERT_EQ(quadratic.size(), 33u);
    EXPECT_DOUBLE_EQ(quadratic[8].x, 4);
    EXPECT_DOUBLE_EQ(quadratic[8].y, 4);
    EXPECT_DOUBLE_EQ(quadratic[24].y, -4);
}

TEST(SolveEasing, FollowsTheCurve) {
    const Easing straight{0, 0, 1, 1, true};
    for (const double x : {0.0, 0.125, 0.5, 0.9, 1.0})
        EXPECT_NEAR(solve_easing(straight, x), x, 1.5 / (1LL << 32)); // at most 1.5 times as steep
    // Where x is s itself, the y of the curve can be had from its formula.
    const Easing bump{1.0 / 3, 2, 2.0 / 3, -1, true};
    const double s = 0.3;
    EXPECT_NEAR(solve_easing(bump, s), 3 * .49 * .3 * 2 - 3 * .7 * .09 + .027, 1e-8);
    EXPECT_EQ(solve_easing(Easing{}, 0.3), 0.3);
}

TEST(ParseEasing, TakesFourNumbersOnly) {
    EXPECT_EQ(parse_easing("cubic-bezier(.1, -2, 1, 3)").y1, -2);
    for (const char* text : {"", "ease", "cubic-bezier", "cubic-bezier(1,2,3)", "steps(4, end)"})
        EXPECT_FALSE(parse_easing(text).valid) << text;
}

} // namespace
