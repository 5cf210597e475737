#include "theme/json_depth.h"
#include "theme/theme.h"

#include <gtest/gtest.h>

#include <ostream>

namespace Corvel {
namespace {

using Values = std::map<std::string, ThemeValue>;

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

TEST(ThemeFile, WithoutAThemeDoesNotParse) {
    const std::string deep = repeated("[", 100000);
    const std::string files[] = {
        "",
        "   ",
        "null",
        "{}",
        "[]",
        "{\"A\"",
        "{\"A\": {}} x",
        "{'A': {}}",
        "{\"A\": {\"x\": 1e999}}",
        "{\"A\": {\"x\": \"\xff\"}}",
        "{\"A\": {\"x\": NaN}}",
        "\xff\xfe{",
        deep,
        deep + repeated("]", 100000),
        "{\"A\": {\"x\": " + repeated("[", 999) + repeated("]", 999) + "}}",
    };
    for (const std::string& file : files)
        EXPECT_FALSE(parse_theme_file(file)) << file.substr(0, 60);
}

struct ThemeCase {
    std::string file;
    Theme theme;
};

void PrintTo(const ThemeCase& c, std::ostream* out) {
    *out << c.file.substr(0, 100);
}

std::string in_theme(const std::string& members) {
    return "{\"T\": {" + members + "}}";
}

Theme with_values(Values values) {
    return {"T", "", "", "", std::move(values)};
}

class ThemeFileReads : public testing::TestWithParam<ThemeCase> {};

TEST_P(ThemeFileReads, As) {
    const std::optional<Theme> theme = parse_theme_file(GetParam().file);
    ASSERT_TRUE(theme);
    const Theme& wanted = GetParam().theme;
    EXPECT_EQ(theme->name, wanted.name);
    EXPECT_EQ(theme->publisher, wanted.publisher);
    EXPECT_EQ(theme->uuid, wanted.uuid);
    EXPECT_EQ(theme->type, wanted.type);
    EXPECT_TRUE(theme->values == wanted.values);
}

const ThemeValue none;

INSTANTIATE_TEST_SUITE_P(
    TopLevels, ThemeFileReads,
    testing::Values(ThemeCase{"{\"First\": {}, \"Second\": {\"x\": 1}}", {"First", "", "", "", {}}},
                    ThemeCase{"\xef\xbb\xbf{\"T\": {}}", with_values({})},
                    ThemeCase{"{\"T\": 5}", with_values({})},
                    ThemeCase{"{\"\": {\"x\": true}}", {"", "", "", "", {{"x", true}}}},
                    ThemeCase{"{\"T\": {\"x\": 1}, \"T\": {\"y\": 2}}", with_values({{"y", 2.0}})},
                    // The library's view of an array has the index as key, that of a scalar none.
                    ThemeCase{"[{\"x\": 1}, 2]", {"0", "", "", "", {{"x", 1.0}}}},
                    ThemeCase{"7", {"", "", "", "", {}}},
                    ThemeCase{"\"text\"", {"", "", "", "", {}}},
                    ThemeCase{"{\"A\": " + repeated("[", 999) + repeated("]", 999) + "}",
                              {"A", "", "", "", {}}}));

INSTANTIATE_TEST_SUITE_P(
    Members, ThemeFileReads,
    testing::Values(
        ThemeCase{
            in_theme(R"("s": "text", "b": false, "i": -3, "f": 0.5, "u": 18446744073709551615)"),
            with_values({{"s", "text"},
                         {"b", false},
                         {"i", -3.0},
                         {"f", 0.5},
                         {"u", 18446744073709551615.0}})},
        ThemeCase{in_theme(R"("n": null, "a": [1], "o": {"x": 1})"),
                  with_values({{"n", none}, {"a", none}, {"o", none}})},
        ThemeCase{in_theme(R"("k": 1, "k": "later")"), with_values({{"k", "later"}})},
        ThemeCase{in_theme(R"("_meta": {"publisher": "P", "uuid": "U", "type": "Y", "more": 1})"),
                  {"T", "P", "U", "Y", {}}},
        ThemeCase{in_theme(R"("_meta": {"publisher": 1, "uuid": null, "type": ["Y"]})"),
                  with_values({})},
        ThemeCase{in_theme(R"("_meta": "P")"), with_values({})},
        ThemeCase{in_theme(R"("_meta": [{"publisher": "P"}])"), with_values({})}));

const Values plain_gradient = {{"Gradient.Start", 0.0},
                               {"Gradient.Start Color", "#111"},
                               {"Gradient.End", 1.0},
                               {"Gradient.End Color", "#222"}};

INSTANTIATE_TEST_SUITE_P(
    Gradients, ThemeFileReads,
    testing::Values(
        ThemeCase{in_theme(R"("Gradient": ["0:#111", "1:#222"])"), with_values(plain_gradient)},
        ThemeCase{in_theme(R"("Gradient": [" 0.25x:a:b", "word:"])"),
                  with_values({{"Gradient.Start", 0.25},
                               {"Gradient.Start Color", "a:b"},
                               {"Gradient.End", 0.0},
                               {"Gradient.End Color", ""}})},
        ThemeCase{in_theme(R"("Gradient": ["0:#111"])"), with_values({{"Gradient", none}})},
        ThemeCase{in_theme(R"("Gradient": ["0:#111", "1:#222", "2:#333"])"),
                  with_values({{"Gradient", none}})},
        ThemeCase{in_theme(R"("Gradient": ["0:#111", "no colon"])"),
                  with_values({{"Gradient", none}})},
        ThemeCase{in_theme(R"("Gradient": ["0:#111", 1])"), with_values({{"Gradient", none}})},
        ThemeCase{in_theme(R"("Gradient": {"0": "#111", "1": "#222"})"),
                  with_values({{"Gradient", none}})},
        ThemeCase{in_theme(R"("Gradient": "0:#111")"), with_values({{"Gradient", "0:#111"}})},
        ThemeCase{in_theme(R"("Gradient": 4)"), with_values({{"Gradient", 4.0}})},
        ThemeCase{in_theme(R"("Gradient.Start": 9, "Gradient": ["0:#111", "1:#222"])"),
                  with_values(plain_gradient)},
        ThemeCase{in_theme(R"("Gradient": ["5:#111", "1:#222"], "Gradient.Start": 0)"),
                  with_values(plain_gradient)}));

TEST(Theme, DisplayNamePrefersThePublisher) {
    EXPECT_EQ(theme_display_name({"Dark", "pub", "id", "", {}}), "Dark (pub)");
    EXPECT_EQ(theme_display_name({"Dark", "", "id", "", {}}), "Dark (id)");
    EXPECT_EQ(theme_display_name({"Dark", "", "", "type", {}}), "Dark");
}

TEST(Theme, ValueIsAStringOrNothing) {
    const Theme theme = with_values({{"s", "text"}, {"n", 4.0}, {"b", true}, {"-", none}});
    EXPECT_EQ(theme_value(theme, "s"), "text");
    for (const char* key : {"n", "b", "-", "missing"})
        EXPECT_EQ(theme_value(theme, key), "") << key;
}

TEST(JsonDepth, HeedsStringsAndEscapes) {
    EXPECT_FALSE(json_nests_deeper_than("[[1], [2]]", 2));
    EXPECT_TRUE(json_nests_deeper_than("[[1], [{}]]", 2));
    EXPECT_FALSE(json_nests_deeper_than(R"(["[[[", "\"[[[", {"[{": 1}])", 2));
    EXPECT_TRUE(json_nests_deeper_than(R"(["\\", [[]]])", 2));
    EXPECT_FALSE(json_nests_deeper_than("]]]][", 1));
}

} // namespace
} // namespace Corvel
