#include "runtime/binds.h"

#include <gtest/gtest.h>

namespace Corvel {
namespace {

using Pieces = std::vector<std::string_view>;

TEST(Binds, SplitAtSemicolons) {
    EXPECT_EQ(split_binds(""), Pieces());
    EXPECT_EQ(split_binds(" ; ;\t;"), Pieces());
    EXPECT_EQ(split_binds("Field:a"), Pieces({"Field:a"}));
    EXPECT_EQ(split_binds(" Field:a b ;\n\v\f\r\tHref: c;"), Pieces({"Field:a b", "Href: c"}));
}

TEST(Binds, ListFormsAreTheWholeText) {
    EXPECT_EQ(parse_binds("ThemeList").mode, ChildMode::Themes);
    EXPECT_EQ(parse_binds("ThemeList ").mode, ChildMode::Layers);
    EXPECT_EQ(parse_binds(" List:a").mode, ChildMode::Layers);
    const Binds list = parse_binds("List:a; State:S:k");
    EXPECT_EQ(list.mode, ChildMode::Rows);
    EXPECT_EQ(list.list_key, "a; State:S:k");
    EXPECT_TRUE(list.has_states);
    EXPECT_EQ(parse_binds("List:").list_key, "");
}

TEST(Binds, KnownPiecesStayInOrder) {
    const Binds binds = parse_binds("Grow:g;Field: k ;Nothing;field:x;State:a:b:c;State:none");
    ASSERT_EQ(binds.pieces.size(), 3u);
    EXPECT_EQ(binds.pieces[0].kind, BindKind::Grow);
    EXPECT_EQ(binds.pieces[0].key, "g");
    EXPECT_EQ(binds.pieces[1].kind, BindKind::Field);
    EXPECT_EQ(binds.pieces[1].key, " k");
    EXPECT_EQ(binds.pieces[2].kind, BindKind::State);
    EXPECT_EQ(binds.pieces[2].state, "a");
    EXPECT_EQ(binds.pieces[2].key, "b:c");
}

TEST(Binds, NumbersAreReadFromTheFront) {
    const std::pair<const char*, double> numbers[] = {
        {"4", 4},       {" \t-2.5px", -2.5}, {"+.5", 0.5}, {"1e3x", 1000},
        {"0x10", 16.0}, {"12,5", 12},        {"007", 7},
    };
    for (const auto& [text, number] : numbers)
        EXPECT_EQ(leading_number(text), number) << text;
    for (const char* text : {"", " ", "px4", "-", ".", "e5", "1e999", "-1e999"})
        EXPECT_FALSE(leading_number(text)) << text;
    EXPECT_EQ(leading_number(std::string("4\0005", 3)), 4);
}

TEST(Binds, SwitchesAreOffForThreeValues) {
    for (const char* off : {"", "0", "false"})
        EXPECT_FALSE(is_switched_on(off)) << off;
    for (const char* on : {"1", "true", "False", "00", " ", "no"})
        EXPECT_TRUE(is_switched_on(on)) << on;
}

} // namespace
} // namespace Corvel
