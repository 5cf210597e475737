#include "layers/layers_support.h"
#include "layers/lexer.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace Layers {
namespace {

const std::array<const char*, 19> kind_names{"Name",   "Bool",   "Num", "Str", "Color", ":", "@",
                                             "&",      "/",      ".",   "(",   ")",     ",", "<<",
                                             "Indent", "Dedent", "End", "EOF", "Error"};

/// "kind[text]" for tokens whose text varies, the kind for the others; a line end with its line.
std::string show_tokens(const std::vector<Token>& tokens) {
    std::string shown;
    for (const Token& token : tokens) {
        shown += shown.empty() ? "" : " ";
        shown += kind_names.at(static_cast<std::size_t>(token.kind));
        if (token.kind <= TokenKind::Color || token.kind == TokenKind::Error)
            shown += "[" + std::string(token.text) + "]";
        if (token.kind == TokenKind::LineEnd)
            shown += std::to_string(token.line);
    }
    return shown;
}

struct LexerCase {
    const char* name;
    std::string_view text;
    std::string tokens;
    std::vector<std::string> diagnostics;
};

void PrintTo(const LexerCase& c, std::ostream* out) {
    *out << c.name;
}

class LexerTest : public testing::TestWithParam<LexerCase> {};

TEST_P(LexerTest, GivesTokensAndDiagnostics) {
    const LexerCase& c = GetParam();
    Lexer lexer(c.text);
    EXPECT_EQ(show_tokens(lexer.tokenize()), c.tokens);
    EXPECT_EQ(lines_of(lexer.diagnostics()), c.diagnostics);
}

using namespace std::string_literals;
using namespace std::string_view_literals;

const std::string tab_message = "2: Found tab in indentation; indent with spaces instead.";

const LexerCase lexer_cases[] = {
    {"Empty", "", "EOF", {}},
    {"OnlyBlankLinesAndComments", "\n  \n // note\n\t\n   // more", "EOF", {}},
    {"NoNewlineAtTheEnd", "a:\n  b", "Name[a] : End1 Indent Name[b] End2 Dedent EOF", {}},
    {"NewlineAtTheEnd", "a:\n  b\n", "Name[a] : End1 Indent Name[b] End2 Dedent EOF", {}},
    {"SpacesAfterTheLastNewline", "a\n   ", "Name[a] End1 EOF", {}},
    {"BlankLineBetweenIndentedLines",
     "a:\n  b\n\n  c\n",
     "Name[a] : End1 Indent Name[b] End2 Name[c] End4 Dedent EOF",
     {}},
    {"CommentBehindTokens", "a // b\nc", "Name[a] End1 Name[c] End2 EOF", {}},
    {"CommentLineIgnoresIndentation",
     "a:\n  b\n      // deep\n  c",
     "Name[a] : End1 Indent Name[b] End2 Name[c] End4 Dedent EOF",
     {}},
    {"CommentWithCarriageReturn", "a // b\r\nc", "Name[a] End1 Name[c] End2 EOF", {}},
    {"CarriageReturnLineFeed",
     "a:\r\n\r\n  b\r\n",
     "Name[a] : End1 Indent Name[b] End3 Dedent EOF",
     {}},
    {"LoneCarriageReturn",
     "a\rb",
     "Name[a] Error[\r] Name[b] End1 EOF",
     {"1: Found unexpected character '\r'"}},
    {"ByteOrderMark",
     "\xEF\xBB\xBF"
     "a",
     "Name[a] End1 EOF",
     {}},
    {"ByteOrderMarkFurtherIn",
     " \xEF",
     "Indent Error[\xEF] End1 Dedent EOF",
     {"1: Found unexpected character '\xEF'"}},
    {"DedentToNoLevel",
     "a:\n    b\n  c",
     "Name[a] : End1 Indent Name[b] End2 Dedent Name[c] End3 EOF",
     {"3: Found indentation mismatch; line has 2 leading spaces but 0 were expected."}},
    {"SeveralDedents",
     "a\n b\n  c\nd",
     "Name[a] End1 Indent Name[b] End2 Indent Name[c] End3 Dedent Dedent Name[d] End4 EOF",
     {}},
    {"TabsCountAsColumns",
     "a\n\t\tb\n  c",
     "Name[a] End1 Indent Name[b] End2 Name[c] End3 Dedent EOF",
     {tab_message}},
    {"TabBetweenTokens", "a\tb", "Name[a] Name[b] End1 EOF", {}},
    {"Punctuation", "&().,:@/<<", "& ( ) . , : @ / << End1 EOF", {}},
    {"SingleLess",
     "a < b",
     "Name[a] Error[<] Name[b] End1 EOF",
     {"1: Found single `<`; did you mean `<<` for inheritance?"}},
    {"ThreeLess",
     "<<<",
     "<< Error[<] End1 EOF",
     {"1: Found single `<`; did you mean `<<` for inheritance?"}},
    {"Names",
     "Start-Color _x a1 -b -- -",
     "Name[Start-Color] Name[_x] Name[a1] Name[-b] Name[--] Name[-] End1 EOF",
     {}},
    {"KeywordsByPrefix",
     "true false trueish falsetto tru fals t f",
     "Bool[true] Bool[false] Bool[true] Name[ish] Bool[false] Name[tto] Name[tru] Name[fals] "
     "Name[t] Name[f] End1 EOF",
     {}},
    {"KeywordInsideName", "untrue", "Name[untrue] End1 EOF", {}},
    {"Numbers",
     "1 -3.5 007 1.5.2 2. 1e3 10px --1",
     "Num[1] Num[-3.5] Num[007] Num[1.5] . Num[2] Num[2] . Num[1] Name[e3] Num[10] Name[px] "
     "Name[--1] End1 EOF",
     {}},
    {"Strings",
     R"("" "a\"b" "\\" "// no comment")",
     R"(Str[""] Str["a\"b"] Str["\\"] Str["// no comment"] End1 EOF)",
     {}},
    {"StringBrokenByLineEnd",
     "\"ab\nc",
     "Error[\"ab] End1 Name[c] End2 EOF",
     {"1: Found non-terminated string: \"ab"}},
    {"StringEndsInBackslash",
     "\"ab\\\nc",
     "Error[\"ab\\] End1 Name[c] End2 EOF",
     {"1: Found non-terminated string: \"ab\\"}},
    {"StringWithNul",
     "\"a\0b"sv,
     "Error[\"a] Error["s + '\0' + "] Name[b] End1 EOF",
     {"1: Found non-terminated string: \"a", "1: Found unexpected character '"s + '\0' + "'"}},
    {"Colors",
     "#abc #ABCD #123456 #12345678",
     "Color[#abc] Color[#ABCD] Color[#123456] Color[#12345678] End1 EOF",
     {}},
    {"BadColors",
     "#12345 # #1g",
     "Error[#12345] Error[#] Error[#1] Name[g] End1 EOF",
     {"1: Found `#` with 5 hex digits; expected 3, 4, 6, or 8 for a color: #12345",
      "1: Found `#` with 0 hex digits; expected 3, 4, 6, or 8 for a color: #",
      "1: Found `#` with 1 hex digits; expected 3, 4, 6, or 8 for a color: #1"}},
    {"NonAsciiInStringAndComment", "\"\xC3\xA9\" // \xC3\xA9", "Str[\"\xC3\xA9\"] End1 EOF", {}},
    {"NonAsciiElsewhere",
     "\xC3\xA9",
     "Error[\xC3] Error[\xA9] End1 EOF",
     {"1: Found unexpected character '\xC3'", "1: Found unexpected character '\xA9'"}},
    {"TwoFaultsInOrder",
     "a ?\n\tb !",
     "Name[a] Error[?] End1 Indent Name[b] Error[!] End2 Dedent EOF",
     {"1: Found unexpected character '?'", tab_message, "2: Found unexpected character '!'"}},
};

INSTANTIATE_TEST_SUITE_P(All, LexerTest, testing::ValuesIn(lexer_cases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(LexerTokenText, OfStructuralTokens) {
    Lexer lexer("a:\r\n    b");
    const std::vector<Token> tokens = lexer.tokenize();
    ASSERT_EQ(tokens.size(), 8u);
    EXPECT_EQ(tokens[2].text, "\r\n");
    EXPECT_EQ(tokens[3].text, "    ");
    EXPECT_EQ(tokens[5].text, ""); // the line end and the dedent made at the end of the file
    EXPECT_EQ(tokens[6].text, "");
    EXPECT_EQ(tokens[7].line, 2u);
}

} // namespace
} // namespace Layers
