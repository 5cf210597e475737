#include "layers/layers_support.h"
#include "layers/lexer.h"
#include "layers/parser.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace Layers {
namespace {

// The syntax tree as one line: "layer<<base{...}", "attribute=value", "state-set@A&B{...}",
// "group.{...}"; expansions as "(A,B)"; references behind ">".

std::string show_name(const NameNode& name) {
    std::string text;
    for (const NamePart& part : name.parts) {
        text += text.empty() ? "" : " ";
        const bool is_expansion = part.alternatives.size() != 1;
        std::string alternatives;
        for (std::size_t i = 0; i < part.alternatives.size(); ++i)
            alternatives += (i > 0 ? "," : "") + std::string(part.alternatives[i]);
        text += is_expansion ? "(" + alternatives + ")" : alternatives;
    }
    return text;
}

std::string show_declaration(const DeclarationName& declaration) {
    std::string text;
    for (const NameNode& entry : declaration.traversal)
        text += show_name(entry) + "/";
    if (!declaration.group.empty())
        text += show_name(declaration.group) + ".";
    return text + show_name(declaration.name);
}

std::string show_value(const ValueNode& value) {
    if (const auto* reference = std::get_if<ReferenceNode>(&value))
        return ">" + reference_text(*reference);
    const auto& literal = std::get<LiteralValue>(value);
    std::ostringstream text;
    if (const auto* color = std::get_if<Color>(&literal))
        text << "rgba(" << color->red << ' ' << color->green << ' ' << color->blue << ' '
             << color->alpha << ")";
    else if (const auto* string = std::get_if<std::string_view>(&literal))
        text << '"' << *string << '"';
    else if (const auto* number = std::get_if<double>(&literal))
        text << *number;
    else if (const auto* flag = std::get_if<bool>(&literal))
        text << (*flag ? "true" : "false");
    else
        text << "none";
    return text.str();
}

std::string show_states(std::span<const std::string_view> states) {
    std::string text = "@";
    for (const std::string_view state : states)
        text += (text.size() > 1 ? "&" : "") + std::string(state);
    return text;
}

std::string show_node(const AttributeNode& node) {
    std::string text = show_declaration(node.declaration) + "=" + show_value(node.value);
    for (const StateNode& state : node.states)
        text += show_states(state.states) + "=" + show_value(state.value);
    return text;
}

std::string show_node(const GroupSetNode& node);
std::string show_node(const StateSetNode& node);
std::string show_node(const LayerNode& node);

template <class Nodes>
std::string show_list(const Nodes& nodes) {
    std::string text;
    for (const auto& node : nodes)
        text += show_node(node) + "; ";
    return text;
}

std::string show_node(const GroupSetNode& node) {
    return show_declaration(node.declaration) + "{" + show_list(node.attributes) + "}";
}

std::string show_node(const StateSetNode& node) {
    return show_states(node.states) + "{" + show_list(node.attributes) +
           show_list(node.group_sets) + "}";
}

std::string show_body(const LayerNode& node);

std::string show_node(const LayerNode& node) {
    return show_declaration(node.declaration) +
           (node.base ? "<<" + reference_text(*node.base) : "") + "{" + show_body(node) + "}";
}

std::string show_body(const LayerNode& node) {
    return show_list(node.attributes) + show_list(node.layers) + show_list(node.group_sets) +
           show_list(node.state_sets);
}

struct ParserCase {
    const char* name;
    std::string text;
    std::string tree;
    std::vector<std::string> diagnostics;
};

void PrintTo(const ParserCase& c, std::ostream* out) {
    *out << c.name;
}

class ParserTest : public testing::TestWithParam<ParserCase> {};

TEST_P(ParserTest, GivesTreeAndDiagnostics) {
    const ParserCase& c = GetParam();
    Lexer lexer(c.text);
    Parser parser(lexer.tokenize());
    const FileNode file = parser.parse_file();
    EXPECT_EQ(show_body(file), c.tree);
    EXPECT_EQ(lines_of(parser.diagnostics()), c.diagnostics);
}

const ParserCase valid_files[] = {
    {"OnlyComments", "// a\n\n  // b\n", "", {}},
    {"LayerOrAttribute", "Foo:\n  Bar: 1\nBaz: 2\n", "Baz=2; Foo{Bar=1; }; ", {}},
    {"EmptyLayers", "Foo\nFoo << Bar\n", "Foo{}; Foo<<Bar{}; ", {}},
    {"BaseAndBody", "A << B/C D/E:\n  x: 1\n", "A<<B/C D/E{x=1; }; ", {}},
    {"NestedLayers",
     "A:\n  B:\n    C:\n      x: 1\n  y: 2\nz: 3\n",
     "z=3; A{y=2; B{C{x=1; }; }; }; ",
     {}},
    {"Literals",
     "a: true\nb: false\nc: -1.5\nd: \"x\"\n",
     "a=true; b=false; c=-1.5; d=\"x\"; ",
     {}},
    {"Escapes",
     R"(a: "q\"b\\n\n\tz")"
     "\n",
     "a=\"q\"b\\n\n\tz\"; ",
     {}},
    {"Colors",
     "a: #abc\nb: #abcd\nc: #010203\nd: #0102FFfe\n",
     "a=rgba(170 187 204 255); b=rgba(170 187 204 221); c=rgba(1 2 3 255); d=rgba(1 2 255 254); ",
     {}},
    {"References",
     "a: B\nb: Long  Name/Group.Start Color\n",
     "a=>B; b=>Long Name/Group.Start Color; ",
     {}},
    {"Traversal", "A/B C/x: 1\nA/B:\n  y: 2\n", "A/B C/x=1; A/B{y=2; }; ", {}},
    {"Group", "Fill.Start Color: 1\nA/Fill.End: 2\n", "Fill.Start Color=1; A/Fill.End=2; ", {}},
    {"Expansion", "(Top, Bottom Far, ) Left: 1\n", "(Top,Bottom Far,) Left=1; ", {}},
    {"ExpansionEverywhere", "(A,B)/(G,H).(x,y): 1\n", "(A,B)/(G,H).(x,y)=1; ", {}},
    {"InlineStates", "a: 1 @S: 2 @S & T: b\n", "a=1@S=2@S&T=>b; ", {}},
    {"IndentedStates", "a: 1\n  @S: 2\n  @T: 3\nb: 4\n", "a=1@S=2@T=3; b=4; ", {}},
    {"StateSet",
     "@S & T:\n  a: 1\n  G.\n    b: 2\n  L/c: 3\n",
     "@S&T{a=1; L/c=3; G.{b=2; }; }; ",
     {}},
    {"GroupSet", "A/G.\n  x: 1 @S: 2\n  y: 3\n", "A/G.{x=1@S=2; y=3; }; ", {}},
    {"SeveralBlocksEndAtOnce", "A:\n  G.\n    x: 1\nB\n", "A{G.{x=1; }; }; B{}; ", {}},
};

INSTANTIATE_TEST_SUITE_P(Valid, ParserTest, testing::ValuesIn(valid_files),
                         [](const auto& test) { return std::string(test.param.name); });

const ParserCase faulty_files[] = {
    {"LayerWithoutBody",
     "Foo:\nBar: 1\n",
     "Bar=1; Foo{}; ",
     {"1: Found unexpected line end; expected indented attributes."}},
    {"LayerAtTheEnd",
     "Foo:",
     "Foo{}; ",
     {"1: Found unexpected line end; expected indented attributes."}},
    {"IndentWithoutBlock",
     "a: 1\nB\n  c: 2\nd: 3\n",
     "a=1; B{}; ",
     {"3: Expected a name.", "4: Expected a name."}},
    {"GroupSetWithColon",
     "Fill.:\n  x: 1\n",
     "Fill.{}; ",
     {"1: Found unexpected `:`; expected indented attributes.", "2: Expected a name.",
      "3: Expected a name."}},
    {"StateSetWithoutColon",
     "@S\n  a: 1\nb: 2\n",
     "b=2; @S{a=1; }; ",
     {"1: Found unexpected line end; expected `:` after state-set states."}},
    {"StateSetWithoutName",
     "@:\n  a: 1\n@S & :\n  b: 2\n",
     "@{a=1; }; @S{b=2; }; ",
     {"1: Found unexpected `:`; expected a state name.",
      "3: Found unexpected `:`; expected a state name."}},
    {"InlineStateInStateSet",
     "@S:\n  a: 1\n  b: 2 @T: 3\n  c: 4\n",
     "@S{a=1; c=4; }; ",
     {"3: Found invalid inline state in state-set attribute."}},
    {"InlineStateInStateSetGroup",
     "@S:\n  G.\n    a: 1 @T: 2\n    b: 3\n",
     "@S{G.{b=3; }; }; ",
     {"3: Found invalid inline state in group-set attribute within a state-set."}},
    {"NoNameInStateSet", "@S:\n  : 1\n  a: 2\n", "@S{a=2; }; ", {"2: Expected a name."}},
    {"UnterminatedExpansion",
     "(A, B\nc: 1\n",
     "c=1; (A,B){}; ",
     {"1: Found unexpected line end; expected `)` to close the expansion."}},
    {"NestedExpansion",
     "((A)): 1\n",
     "A{}; ",
     {"1: Found unexpected `(`; expected `)` to close the expansion.",
      "1: Found unexpected `)`; expected line end after layer declaration."}},
    {"DuplicateAlternative",
     "(A, B, A): 1\n",
     "(A,B)=1; ",
     {"1: Found duplicate expansion alternative `A`."}},
    {"ReferenceWithExpansion",
     "a: (B, C)\nd: E (F, G)\n",
     "a=none; d=>E F; ",
     {"1: Found `(` where expression was expected.",
      "2: Found expansion in reference; expansions are only allowed in declaration names."}},
    {"ReferenceWithoutName",
     "a: B/\nc: D.\n",
     "a=>B/; c=>D.; ",
     {"1: Expected a name in reference.", "2: Expected a name in reference."}},
    {"TraversalBehindGroup",
     "A.b/c: 1\n",
     "A.b=1; ",
     {"1: Found `/` after `.`; traversal must precede grouping."}},
    {"NoGroup",
     ".a: 1\nB/.c: 2\n",
     "a=1; B/c=2; ",
     {"1: Expected a name in group.", "2: Expected a name in group."}},
    {"EmptyTraversalEntry",
     "/a: 1\nB/ /c: 2\n",
     "a=1; B/c=2; ",
     {"1: Expected a name in traversal.", "2: Expected a name in traversal."}},
    {"NoBase",
     "A <<\nB << 1\nC << D << E\n",
     "A{}; B{}; C<<D{}; ",
     {"1: Found unexpected line end; expected reference after `<<`.",
      "2: Found unexpected `1`; expected reference after `<<`.",
      "2: Found unexpected `1`; expected line end after layer declaration.",
      "3: Found unexpected `<<`; expected line end after layer declaration."}},
    {"TextBehindLayer",
     "A 1\nb: 2\n",
     "b=2; A{}; ",
     {"1: Found unexpected `1`; expected line end after layer declaration."}},
    {"TextBehindAttribute",
     "a: 1 2\nb: 10px\nc: 3\n",
     "a=1; b=10; c=3; ",
     {"1: Found unexpected `2`; expected a line end after attribute.",
      "2: Found unexpected `px`; expected a line end after attribute."}},
    {"TextBehindInlineState",
     "a: 1 @S: 2 3\nb: 4\n",
     "a=1@S=2; b=4; ",
     {"1: Found unexpected `3`; expected a line end after inline states."}},
    {"StateWithoutColon",
     "a: 1 @S 2\n",
     "a=1@S=2; ",
     {"1: Found unexpected `2`; expected `:` after state's state names."}},
    {"TextBehindIndentedState",
     "a: 1\n  @S: 2 3\n  @T: 4\nb: 5\n",
     "a=1@S=2; b=5; ",
     {"2: Found unexpected `3`; expected a line end after indented state.",
      "2: Found unexpected `3`; expected dedent to close block of states."}},
    {"AttributesAmongStates",
     "a: 1\n  b: 2\nc: 3\n",
     "a=1; c=3; ",
     {"2: Found unexpected `b`; expected dedent to close block of states."}},
    {"NoValue",
     "a: @S: 1\nb: ,\nc: 2\n",
     "a=none; b=none; c=2; ",
     {"1: Found `@` where expression was expected.",
      "2: Found `,` where expression was expected."}},
    {"NoStateValue",
     "a: 1 @S:\nb: 2\n",
     "a=1@S=none; b=2; ",
     {"1: Found line end where expression was expected."}},
    {"GroupSetAttribute",
     "G.\n  A/x: 1\n  H.y: 2\n  z\n  : 3\n  w: 4\n",
     "G.{z=none; =3; w=4; }; ",
     {"2: Found invalid traversal in group-set attribute declaration.",
      "3: Found invalid group in group-set attribute declaration.",
      "4: Found unexpected line end; expected a colon `:` after attribute declaration.",
      "5: Expected an attribute name."}},
    {"NumberTooLarge",
     "a: " + std::string(400, '9') + "\nb: 1\n",
     "a=0; b=1; ",
     {"1: Found `" + std::string(400, '9') + "`; this number is too large to represent."}},
    {"UnknownEscape",
     R"(a: "x\qy")"
     "\n",
     "a=\"xy\"; ",
     {R"(1: Found unknown escape `\q`; expected \", \\, \n, or \t.)"}},
    {"IndentAtTheEnd",
     "A:\n  B\n    c: 1\nd: 2\n",
     "A{B{}; }; ",
     {"3: Expected a name.", "4: Expected a name."}},
    {"ErrorToken",
     "a: ?\n? b\nc: 1\n",
     "a=none; c=1; ",
     {"1: Found error where expression was expected.", "2: Expected a name."}},
    {"TwoFaults",
     "A:\n  x: 1 1\n  y: 2\nB: C:\nz: 3\n",
     "B=>C; z=3; A{x=1; y=2; }; ",
     {"2: Found unexpected `1`; expected a line end after attribute.",
      "4: Found unexpected `:`; expected a line end after attribute."}},
};

INSTANTIATE_TEST_SUITE_P(Faulty, ParserTest, testing::ValuesIn(faulty_files),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(ParserOnALexer, ReadsWhatItReadsFromAList) {
    std::string text;
    using Cases = std::span<const ParserCase>;
    for (const Cases cases : {Cases(valid_files), Cases(faulty_files)})
        for (int round = 0; round < 20; ++round)
            for (const ParserCase& c : cases)
                text += c.text + "\n";
    Lexer for_list(text);
    Parser from_list(for_list.tokenize());
    Lexer lexer(text);
    Parser from_lexer(lexer);
    EXPECT_EQ(show_body(from_lexer.parse_file()), show_body(from_list.parse_file()));
    EXPECT_EQ(from_lexer.diagnostics(), from_list.diagnostics());
    EXPECT_EQ(lexer.diagnostics(), for_list.diagnostics());
    EXPECT_GT(from_lexer.diagnostics().size(), 500u);
}

// What the lexer never gives, since it closes what it opens.
TEST(ParserOnOddTokens, ReportsNoProgressAndGoesOn) {
    const auto diagnostics_for = [](std::vector<Token> tokens) {
        Parser parser(std::move(tokens));
        parser.parse_file();
        return lines_of(parser.diagnostics());
    };
    using enum TokenKind;
    EXPECT_EQ(diagnostics_for({}), std::vector<std::string>{});
    EXPECT_EQ(
        diagnostics_for(
            {{"", At, 1}, {"S", Name, 1}, {":", Colon, 1}, {"", LineEnd, 1}, {"", Indent, 2}}),
        (std::vector<std::string>{
            "2: Expected a name.",
            "2: Failed to progress parsing state-set; proceeding unconditionally.",
            "2: Found unexpected end of file; expected dedent to close state-set."}));
    EXPECT_EQ(diagnostics_for({{"A", Name, 1}, {"", Dot, 1}, {"", LineEnd, 1}, {"", Indent, 2}}),
              (std::vector<std::string>{
                  "2: Expected an attribute name.",
                  "2: Found unexpected end of file; expected a colon `:` after attribute "
                  "declaration.",
                  "2: Failed to progress parsing group-set; proceeding unconditionally.",
                  "2: Found unexpected end of file; expected dedent to close group-set."}));
    EXPECT_EQ(diagnostics_for({{"A", Name, 1}, {"", Colon, 1}, {"", LineEnd, 1}, {"", Indent, 2}}),
              (std::vector<std::string>{
                  "2: Expected a name.",
                  "2: Failed to progress parsing layer definition; proceeding unconditionally.",
                  "2: Found unexpected end of file; expected dedent to close layer definition."}));
}

TEST(DescribeToken, NamesTheKindOrQuotesTheText) {
    EXPECT_EQ(describe_token({"<<", TokenKind::Inherit, 1}), "`<<`");
    EXPECT_EQ(describe_token({"x", TokenKind::Name, 1}), "`x`");
    EXPECT_EQ(describe_token({"  ", TokenKind::Indent, 1}), "indent");
    EXPECT_EQ(describe_token({"", TokenKind::Dedent, 1}), "dedent");
    EXPECT_EQ(describe_token({"", static_cast<TokenKind>(99), 1}), "unknown");
}

} // namespace
} // namespace Layers
