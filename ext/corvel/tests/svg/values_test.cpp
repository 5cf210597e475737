#include "support/case_file.h"
#include "svg/affine.h"
#include "svg/easing.h"
#include "svg/rising_keys.h"
#include "svg/svg_document.h"
#include "svg/svg_path.h"
#include "svg/svg_values.h"

#include <algorithm>
#include <bit>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace Corvel::Svg;

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
    std::istringstream texts(
        "| |1| "
        "\t\v\f+1.5e3x|-.5|.|-|+-1|--1|1.|1.e2|1e|1e+|0x|0x1.8p1|0X.8|0x.|-0x1p|0xg|0x-1|0xinf|inf|"
        "-Infinity|infi|nan|-NaN(12a)|nan(|nan(-)|1e400|-1e400|1e-400|0e99999999999|0.000001e310|"
        "100000e-330|1e99999999999999999999|1e-99999999999999999999|0x1p5000|0x1p-5000|4.9e-324|2e-"
        "324|1.7976931348623159e308|1,5");
    for (std::string text; std::getline(texts, text, '|');)
        expect_like_strtod(text);
    std::mt19937 random(7);
    const std::string_view alphabet = "0123456789..eE+--xX pPinfINFaA(";
    for (int i = 0; i < 50'000; ++i) {
        std::string text(random() % 13, ' ');
        for (char& c : text)
            c = alphabet[random() % alphabet.size()];
        expect_like_strtod(text);
    }
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

std::string joined(const std::vector<double>& numbers) {
    std::string text;
    for (const double number : numbers)
        text += (text.empty() ? "" : " ") + format_number(number);
    return text;
}

std::string value_of(const std::string& line) {
    const std::string function = line.substr(0, line.find(' '));
    const std::string text = line.substr(function.size() + 1);
    if (function == "transform")
        return format_matrix(parse_transform(text));
    if (function == "time")
        return format_number(parse_time(text));
    if (function == "numbers")
        return joined(parse_numbers(text));
    if (function == "easing") {
        const Easing easing = parse_easing(text);
        return easing.valid ? joined({easing.x1, easing.y1, easing.x2, easing.y2}) : "none";
    }
    if (function == "attributes") {
        const SvgDocument document(text);
        std::string found;
        for (const SvgAttribute& attribute : document.elements.at(0).attributes)
            found += (found.empty() ? "" : " ") + std::string(attribute.name) + "=" +
                     std::string(attribute.value);
        return found;
    }
    std::string points;
    for (const Point& point : parse_path(text))
        points +=
            (points.empty() ? "" : " ") + format_number(point.x) + ',' + format_number(point.y);
    return points;
}

TEST(Values, AreReadFromTexts) {
    TestSupport::expect_lines("tests/svg/cases/values.txt", value_of);
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

// Keys that rise are halved, others have a rule of their own: both as a walk from the first finds.
TEST(RisingKeys, AreSearchedAsIfOneByOne) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double pool[] = {0, 0.25, 0.5, 0.5, 0.75, 1, 2, -1, nan};
    std::mt19937 random(3);
    for (int round = 0; round < 20'000; ++round) {
        std::vector<double> numbers;
        const bool rises = round % 2 == 0;
        for (auto count = 2 + random() % 7; count > 0; --count)
            numbers.push_back(pool[random() % (std::size(pool) - (rises ? 1 : 0))]);
        if (rises)
            std::sort(numbers.begin(), numbers.end());
        RisingKeys keys;
        for (const double number : numbers)
            keys.push_back(number);
        const double position = pool[random() % std::size(pool)];
        std::size_t expected = 0;
        while (expected + 2 < numbers.size() && position > numbers[expected + 1])
            ++expected;
        ASSERT_EQ(keys.interval_of(position), expected) << testing::PrintToString(numbers);
    }
}

} // namespace
