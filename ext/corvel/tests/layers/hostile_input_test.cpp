#include "layers/layer_builder.h"
#include "layers/layers_support.h"
#include "layers/parser.h"
#include "layers/style_reader.h"

#include <gtest/gtest.h>

#include <random>

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
std::string chain(const std::string& left, const std::string& middle, int count) {
    std::string text;
    for (int i = 1; i < count; ++i)
        text += left + std::to_string(i) + middle + std::to_string(i - 1) + "\n";
    return text;
}

// Loads `text` and reads all of it, whatever the text.
void read_everything(const std::string& text) {
    LogCapture log;
    StyleTree tree;
    tree.load(text);
    tree.link();
    for (const std::unique_ptr<LObject>& child : tree.root.children())
        read_node_style(child->as_layer(), {"Hover", "Narrow"});
    log.take();
}

// The suite's time limit stands for "no hang".
TEST(HostileInput, OnePieceAnyNumberOfTimes) {
    const std::string pieces[] = {
        "a/",  "a.",       "a ",          "a << ",        "(",          "(a, ", "(a, b) ",
        "()",  "@S: 1 ",   "\"",          "\\",           "#",          "9",    "\r",
        " \n", "a:\n b\n", "a.\n x: 1\n", "@S:\n a: 1\n", "a << b/((\n"};
    for (const std::string& piece : pieces)
        read_everything("x: 1\n" + repeated(piece, many));
}

TEST(HostileInput, LayersOfAnyDepth) {
    const std::string deep = repeated("a/", many);
    const std::string half = repeated("a/", many / 2);
    StyleTree tree("B/" + deep + "x: 1\nD << B:\n  y: 2\nD/" + half + "z: 3\nE << D\n");
    EXPECT_EQ(tree.value("E/" + deep + "x"), "1");
    EXPECT_EQ(tree.value("E/" + half + "z"), "3");
}

TEST(HostileInput, BlocksOfAnyDepth) {
    std::vector<Token> tokens; // as text they would take gigabytes of indentation
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
    LoadLimits limits;
    LayerBuilder(root, limits).pour(file, {});
    EXPECT_NE(root.find_layer(repeated("a/", many) + "b"), nullptr);
}

TEST(HostileInput, LongChainsOfBasesAndLinks) {
    const int length = 50'000;
    StyleTree tree("L0:\n  x: 1 @S: 2\n" + chain("L", " << L", length) + "a0: 7\n" +
                   chain("a", ": a", length));
    const std::string last = std::to_string(length - 1);
    EXPECT_EQ(tree.value("L" + last + "/x", {"S"}), "2");
    tree.attribute("a0").set_value(8.0);
    EXPECT_EQ(tree.value("a" + last), "8");
}

TEST(HostileInput, MutatedFilesNeverCrash) {
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
    const std::string pieces[] = {"\n", "\n    ", "(",  ")",   ",",    "@",    "&",
                                  ":",  ".",      "/",  "<<",  "\"",   "\\",   "//",
                                  "#",  "A",      "\t", "1e9", "true", "\r\n", "\xff"};
    std::mt19937 random(20240611);
    const auto below = [&](std::size_t count) { return random() % count; };
    for (int round = 0; round < 3000; ++round) {
        std::string text = sample;
        for (std::size_t edits = 1 + below(8); edits > 0; --edits) {
            text.insert(below(text.size() + 1), pieces[below(std::size(pieces))]);
            text.erase(below(text.size()), below(12));
            text.insert(below(text.size() + 1), text.substr(below(text.size() + 1), below(40)));
        }
        SCOPED_TRACE(text);
        read_everything(text);
    }
}

} // namespace
} // namespace Layers
