#include "layers/attributes.h"
#include "layers/layer_builder.h"
#include "layers/layers_support.h"
#include "layers/lexer.h"
#include "layers/linker.h"
#include "layers/parser.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace Layers {
namespace {

constexpr int many = 100'000;

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

/// `count` lines, each made of its number and of the one before.
std::string chain(const std::string& left, const std::string& middle, const std::string& right,
                  int count) {
    std::string text;
    for (int i = 1; i < count; ++i)
        text += left + std::to_string(i) + middle + std::to_string(i - 1) + right;
    return text;
}

TEST(HostileInput, LayersOfAnyDepth) {
    const std::string deep = repeated("a/", many);
    StyleTree tree("B/" + deep + "x: 1\nD << B:\n  y: 2\nD/" + repeated("a/", many / 2) +
                   "z: 3\nE << D\n");
    tree.link();
    EXPECT_EQ(tree.value("E/" + deep + "x"), "1");
    EXPECT_EQ(tree.value("E/" + repeated("a/", many / 2) + "z"), "3");
}

TEST(HostileInput, BlocksOfAnyDepth) {
    std::vector<Token> tokens;
    for (int i = 0; i < many; ++i)
        tokens.insert(tokens.end(), {{"a", TokenKind::Name, 1},
                                     {":", TokenKind::Colon, 1},
                                     {"\n", TokenKind::LineEnd, 1},
                                     {" ", TokenKind::Indent, 1}});
    tokens.insert(tokens.end(), {{"b", TokenKind::Name, 1}, {"\n", TokenKind::LineEnd, 1}});
    tokens.insert(tokens.end(), many, {"", TokenKind::Dedent, 1});
    Parser parser(std::move(tokens));
    const FileNode file = parser.parse_file();
    EXPECT_TRUE(parser.diagnostics().empty());
    LLayer root("");
    LayerBuilder(root).pour(file);
    EXPECT_NE(root.find_layer(repeated("a/", many) + "b"), nullptr);
}

TEST(HostileInput, ParenthesesOfAnyNumber) {
    const std::string text = repeated("(", many) + repeated(")", many);
    Lexer lexer(text);
    Parser parser(lexer);
    parser.parse_file();
    EXPECT_EQ(parser.diagnostics().size(), static_cast<std::size_t>(many));
}

TEST(HostileInput, LongChainsOfBasesAndLinks) {
    const int length = many / 2;
    StyleTree tree("L0:\n  x: 1 @S: 2\n" + chain("L", " << L", "\n", length) + "a0: 7\n" +
                   chain("a", ": a", "\n", length));
    tree.link();
    const std::string last = std::to_string(length - 1);
    EXPECT_EQ(tree.value("L" + last + "/x", {"S"}), "2");
    EXPECT_EQ(tree.value("a" + last), "7");
    int told = 0;
    tree.attribute("a" + last).value_changed().connect([&] { ++told; });
    tree.attribute("a0").set_value(8.0);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(tree.value("a" + last), "8");
}

TEST(HostileInput, ExpansionsThatStandForTooManyNames) {
    LogCapture log;
    const StyleTree one(repeated("(a, b) ", 60) + ": 1\n");
    StyleTree nested("(a,b,c,d,e,f,g,h,i,j):\n  " + repeated("(a,b,c,d,e,f,g,h,i,j)/", 6) +
                     "x:\n    y: 1\n");
    const std::string left_out =
        "engine: Left out declarations; the expansions stand for too many names.";
    EXPECT_EQ(log.take(), (std::vector<std::string>{left_out, left_out}));
}

TEST(HostileInput, LayersThatDoubleByInheritance) {
    LogCapture log;
    std::string text = "L0:\n  x: 1\n";
    for (int i = 1; i < 40; ++i)
        text += "L" + std::to_string(i) + ":\n  (a, b) << L" + std::to_string(i - 1) + "\n";
    StyleTree tree(text);
    EXPECT_EQ(log.take(),
              std::vector<std::string>{"engine: Left out inherited layers; there are too many."});
    EXPECT_EQ(tree.value("L8/a/b/a/b/a/b/a/b/x"), "1");
}

const std::string sample = R"(// A sample with every construct.
Theme:
  Primary: "#112233"
Corvel:
  Button (Small, ) << Corvel/Text:
    Fill: Theme/Primary @Hover: #abc @Hover & Down: "\"x\\\n"
    Fill.
      (Start, End) Color: #11223344
    @Narrow:
      Size.Width: -1.5
      Margins.
        Left: 4
    Border:
      Thickness: 2
        @Hover: 3
App/Window/Body << Corvel/Button Small:
  Row, : true
)";

// Loads `text` and reads all of it, whatever the text.
void read_everything(const std::string& text) {
    LogCapture log;
    LLayer root("");
    Lexer lexer(text);
    Parser parser(lexer);
    const FileNode file = parser.parse_file();
    LayerBuilder(root).pour(file); // also what a load would drop
    resolve_bases(root);
    link_layer(root);
    link_attributes(root);
    for (const std::unique_ptr<LObject>& child : root.children())
        read_node_style(child->as_layer(), {"Hover", "Narrow"});
    log.take();
}

TEST(HostileInput, MutatedFilesNeverCrash) {
    static constexpr std::string_view tokens[] = {
        "\n",     "\n  ", "    ", "(",    ")",
        ",",      "@",    "&",    ":",    ".",
        "/",      "<<",   "\"",   "\\",   "#",
        "\t",     "\r\n", "//",   "A",    "App",
        "Corvel", " << ", "1e9",  "true", std::string_view("\0", 1)};
    std::mt19937 random(20240611);
    const auto below = [&](std::size_t count) { return random() % count; };
    for (int round = 0; round < 3000; ++round) {
        std::string text = sample;
        for (std::size_t edits = 1 + below(8); edits > 0 && !text.empty(); --edits) {
            const std::size_t at = below(text.size());
            switch (below(4)) {
            case 0:
                text[at] = static_cast<char>(below(256));
                break;
            case 1:
                text.erase(at, 1 + below(12));
                break;
            case 2:
                text.insert(at, tokens[below(std::size(tokens))]);
                break;
            default:
                text.insert(at, text.substr(below(text.size()), below(40)));
            }
        }
        ASSERT_NO_FATAL_FAILURE(read_everything(text)) << text;
    }
}

} // namespace
} // namespace Layers
