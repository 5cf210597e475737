// Runs the files of tests/layers/cases.

#include "layers/layers_support.h"
#include "layers/lexer.h"
#include "layers/parser.h"
#include "support/case_file.h"

#include <array>
#include <iomanip>
#include <iterator>

namespace Layers {
namespace {

using TestSupport::expect_cases;

/// Bytes beyond ASCII as "\xC3", so that files of cases stay readable text.
std::string escaped(const std::string& text) {
    std::ostringstream out;
    out << std::hex << std::uppercase;
    for (const char c : text)
        if (static_cast<unsigned char>(c) < 0x80)
            out << c;
        else
            out << "\\x" << static_cast<unsigned>(static_cast<unsigned char>(c));
    return out.str();
}

/// "kind[text]" for tokens whose text varies, the kind for the others, a line end with its line;
/// then the diagnostics.
std::string tokens_of(const std::string& text) {
    static const std::array<const char*, 19> names{
        "Name", "Bool", "Num", "Str", "Color",  ":",      "@",   "&",   "/",    ".",
        "(",    ")",    ",",   "<<",  "Indent", "Dedent", "End", "EOF", "Error"};
    Lexer lexer(text);
    std::string shown;
    for (const Token& token : lexer.tokenize()) {
        shown += shown.empty() ? "" : " ";
        shown += names.at(static_cast<std::size_t>(token.kind));
        if (token.kind <= TokenKind::Color || token.kind == TokenKind::Error)
            shown += "[" + std::string(token.text) + "]";
        if (token.kind == TokenKind::LineEnd)
            shown += std::to_string(token.line);
    }
    return escaped(shown + "\n" + lines_of(lexer.diagnostics()));
}

/// The value of an attribute under states, asked for as "path @State State".
std::string asked(StyleTree& tree, const std::string& question) {
    const std::size_t end = std::min(question.find(" @"), question.size());
    std::istringstream words(question.substr(std::min(end + 2, question.size())));
    return tree.value(question.substr(0, end), {std::istream_iterator<std::string>(words), {}});
}

/// Does "verb path rest" to a linked tree and tells what it gives.
std::string done(StyleTree& tree, const std::string& command, std::string& heard) {
    std::istringstream words(command);
    std::string verb;
    std::string path;
    std::string rest;
    std::getline(words >> verb >> path >> std::ws, rest);
    if (verb == "load") { // one line of a file
        const std::string diagnostics = tree.load(path + " " + rest + "\n");
        tree.link();
        return diagnostics;
    }
    if (verb == "show")
        return show(tree.layer(path));
    LAttribute& attribute = tree.attribute(path);
    const std::uint64_t revision = style_revision();
    if (verb == "watch") {
        attribute.value_changed().connect([&heard, path] { heard += path + " has changed\n"; });
        attribute.link_changed().connect([&heard, path] { heard += path + " is relinked\n"; });
    } else if (verb == "variant") { // "path State"
        attribute.add_child(std::make_unique<LAttribute>(rest))->as_attribute()->set_value(6.0);
    } else if (verb == "set") {
        attribute.set_value(std::stod(rest));
    } else if (verb == "unlink") {
        attribute.clear_link(false);
    } else if (verb == "link") {
        return attribute.set_link(rest) ? "" : "not linked\n";
    } else {
        ADD_FAILURE() << "no such verb: " << verb;
    }
    return verb == "set" && style_revision() == revision ? "no new revision\n" : "";
}

/// Diagnostics, log and tree of style files parted by "---". If lines "> path @State State" or
/// "! verb path ..." end the input, the tree is linked, and what they give stands in its place.
std::string tree_of(const std::string& input) {
    std::string heard;
    LogCapture log;
    StyleTree tree;
    const std::size_t script =
        std::min({input.find("\n> "), input.find("\n! "), input.size() - 1}) + 1;
    const std::string diagnostics = tree.load(input.substr(0, script));
    if (script == input.size())
        return diagnostics + log.take() + show(tree.root);
    tree.link();
    std::istringstream lines(input.substr(script));
    for (std::string line; std::getline(lines, line);)
        heard.append(line[0] == '>' ? asked(tree, line.substr(2)) + "\n"
                                    : done(tree, line.substr(2), heard));
    return diagnostics + log.take() + heard;
}

TEST(LayerCases, Tokens) {
    expect_cases("tests/layers/cases/tokens.txt", tokens_of);
}

TEST(LayerCases, Syntax) {
    expect_cases("tests/layers/cases/syntax.txt", tree_of);
}

TEST(LayerCases, Faults) {
    expect_cases("tests/layers/cases/faults.txt", tree_of);
}

TEST(LayerCases, Inheritance) {
    expect_cases("tests/layers/cases/inheritance.txt", tree_of);
}

TEST(LayerCases, Values) {
    expect_cases("tests/layers/cases/values.txt", tree_of);
}

TEST(LayerCases, Changes) {
    expect_cases("tests/layers/cases/changes.txt", tree_of);
}

TEST(Numbers, TooLargeToRepresent) {
    const std::string digits(400, '9');
    EXPECT_EQ(StyleTree().load("a: " + digits + "\n"),
              "1: Found `" + digits + "`; this number is too large to represent.\n");
}

// Token lists that the lexer never gives, since it closes what it opens.
TEST(OddTokens, AreReportedWithoutEnd) {
    using enum TokenKind;
    const std::string end = "2: Found unexpected end of file; expected ";
    const struct {
        std::vector<Token> tokens;
        std::string diagnostics;
    } cases[] = {
        {{}, ""},
        {{{"", At, 1}, {"S", Name, 1}, {":", Colon, 1}, {"", LineEnd, 1}, {"", Indent, 2}},
         "2: Expected a name.\n"
         "2: Failed to progress parsing state-set; proceeding unconditionally.\n" +
             end + "dedent to close state-set.\n"},
        {{{"A", Name, 1}, {"", Dot, 1}, {"", LineEnd, 1}, {"", Indent, 2}},
         "2: Expected an attribute name.\n" + end +
             "a colon `:` after attribute declaration.\n"
             "2: Failed to progress parsing group-set; proceeding unconditionally.\n" +
             end + "dedent to close group-set.\n"},
        {{{"A", Name, 1}, {"", Colon, 1}, {"", LineEnd, 1}, {"", Indent, 2}},
         "2: Expected a name.\n"
         "2: Failed to progress parsing layer definition; proceeding unconditionally.\n" +
             end + "dedent to close layer definition.\n"},
    };
    for (const auto& c : cases) {
        Parser parser(c.tokens);
        parser.parse_file();
        EXPECT_EQ(lines_of(parser.diagnostics()), c.diagnostics);
    }
}

} // namespace
} // namespace Layers
