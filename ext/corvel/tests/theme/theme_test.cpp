#include "json/json_depth.h"
#include "support/case_file.h"
#include "support/show_value.h"
#include "theme/theme.h"

#include <ctime>

namespace Corvel {
namespace {

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

/// "name|publisher|uuid|type|", then each value as "key=value;"; "no theme" if it does not parse.
std::string show_theme(const std::string& file) {
    const std::optional<Theme> theme = parse_theme_file(file);
    if (!theme)
        return "no theme\n";
    std::ostringstream text;
    text << theme->name << '|' << theme->publisher << '|' << theme->uuid << '|' << theme->type
         << '|';
    for (const auto& [key, value] : theme->values)
        text << ' ' << key << '=' << TestSupport::show_value(value) << ';';
    return text.str() + "\n";
}

TEST(ThemeFile, ReadsAs) {
    TestSupport::expect_cases("tests/theme/cases/themes.txt", show_theme);
}

TEST(ThemeFile, OfAnyDepthAndBytes) {
    const std::string deep = repeated("[", 100000);
    for (const std::string& file :
         {std::string(), std::string("{\"A\": {\"x\": \"\xff\"}}"), std::string("\xff\xfe{"), deep,
          deep + repeated("]", 100000),
          "{\"A\": {\"x\": " + repeated("[", 999) + repeated("]", 999) + "}}"})
        EXPECT_EQ(show_theme(file), "no theme\n") << file.substr(0, 60);
    EXPECT_EQ(show_theme("{\"A\": " + repeated("[", 999) + repeated("]", 999) + "}"), "A||||\n");
    EXPECT_EQ(show_theme("\xef\xbb\xbf{\"T\": {}}"), "T||||\n");
    std::string many = "{\"T\": {\"k\": 0";
    for (int i = 0; i < 50000; ++i)
        many += ", \"k" + std::to_string(i) + "\": 1";
    const std::clock_t start = std::clock();
    EXPECT_EQ(parse_theme_file(many + "}}")->values.size(), 50001u);
    EXPECT_LT(std::clock() - start, 3 * CLOCKS_PER_SEC) << "some 50 ms; a quadratic cost is 8 s";
}

TEST(Theme, DisplayNamePrefersThePublisher) {
    EXPECT_EQ(theme_display_name({"Dark", "pub", "id", "", {}}), "Dark (pub)");
    EXPECT_EQ(theme_display_name({"Dark", "", "id", "", {}}), "Dark (id)");
    EXPECT_EQ(theme_display_name({"Dark", "", "", "type", {}}), "Dark");
}

TEST(JsonDepth, HeedsStringsAndEscapes) {
    EXPECT_EQ(find_json_level_beyond("[[1], [2]]", 2), 0u);
    EXPECT_EQ(find_json_level_beyond("[[1], [{}]]", 2), 8u);
    EXPECT_EQ(find_json_level_beyond(R"(["[[[", "\"[[[", {"[{": 1}])", 2), 0u);
    EXPECT_EQ(find_json_level_beyond(R"(["\\", [[]]])", 2), 9u);
    EXPECT_EQ(find_json_level_beyond("]]]][", 1), 0u);
}

} // namespace
} // namespace Corvel
