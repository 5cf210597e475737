#include "builder/documents/document.h"
#include "builder/documents/shown.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <utility>

namespace Lumenfold::Builder {
namespace {

std::string repeat(const std::string& piece, std::size_t bytes) {
    std::string text;
    text.reserve(bytes + piece.size());
    while (text.size() < bytes)
        text += piece;
    return text;
}

std::string numbered(const std::string& before, const std::string& after, std::size_t bytes) {
    std::string text;
    for (int i = 0; text.size() < bytes; ++i)
        text += before + std::to_string(i) + after;
    return text;
}

std::size_t deepest(const std::string& html) {
    std::size_t depth = 0;
    std::size_t most = 0;
    for (std::size_t at = 0; (at = html.find('<', at)) != std::string::npos; ++at) {
        const bool is_void = html.compare(at, 4, "<br>") == 0 || html.compare(at, 4, "<hr>") == 0 ||
                             html.compare(at, 4, "<img") == 0;
        depth += html[at + 1] == '/' ? std::size_t(-1) : is_void ? 0 : 1;
        most = std::max(most, depth);
    }
    EXPECT_EQ(depth, 0U);
    return most;
}

// What must not happen is a stack overflow, a page that grows far beyond its text, or time that
// grows with the square of the size: that would take minutes here, so the limit leaves much room
// for slow machines and sanitizers.
TEST(MarkdownSize, HugeDocumentsAreHarmless) {
    constexpr std::size_t size = 100'000;
    constexpr std::size_t nested = 40'000;
    const std::pair<const char*, std::string> cases[] = {
        {"one word", std::string(5 * size, 'x')},
        {"paragraphs", repeat("word *em*\n\n", 3 * size)},
        {"quotes", std::string(nested, '>') + " a"},
        {"quotes in lines", repeat(std::string(100, '>') + "a\n", size)},
        {"lists", repeat("- ", 2 * nested) + "a"},
        {"emphasis", std::string(nested, '*') + "a" + std::string(nested, '*')},
        {"open emphasis", repeat("**a *b ", size)},
        {"brackets", std::string(size, '[')},
        {"nested links", std::string(nested, '[') + repeat("](a)", 4 * nested)},
        {"nested pictures", repeat("![", 2 * nested) + repeat("](a)", 4 * nested)},
        {"open links", repeat("[a](<b", size)},
        {"code spans", repeat("`a", size) + "``"},
        {"a long address, many references",
         "[a]: " + std::string(size / 2, 'b') + "\n" + repeat("[a]", size / 2)},
        {"definitions", numbered("[a", "]: x\n", size)},
        {"a wide table, many rows",
         repeat("|", nested) + "\n|" + repeat("-|", 2 * nested - 2) + "\n" + repeat("|\n", size)},
        {"entities", numbered("&a", ";", size / 4)},
        {"equal headings", repeat("# a\n", size / 4)},
        {"broken anchors", numbered("[a](#x", ")\n", size / 10) + numbered("# y", "\n", size / 10)},
        {"autolinks", repeat("www.a", size) + repeat("a@b.", size)},
        {"elements", repeat("<div>", 5 * 33'000)},
        {"elements, closed", repeat("<div>", size / 10) + repeat("</div>", size / 8)},
        {"tables in tables", repeat("<table><tr><td>", size)},
        {"formatting", numbered("<b a", ">", size / 10) + repeat("<p>a", size)},
        {"formatting over Markdown", numbered("<b a", ">", size / 10) + repeat("\n\na", size)},
        {"misnested", repeat("<x-b><div></x-b></div>", size)},
        {"attributes", "<a " + numbered(" a", "", size) + ">"},
        {"comments", repeat("<!--", size)},
        {"open tags", repeat("<a ", size)},
        {"words read as HTML", numbered("<a", ">", size / 4)},
    };
    for (const auto& [name, text] : cases) {
        OpenLinks links;
        Messages messages;
        const std::clock_t start = std::clock();
        const Document document = render_markdown(text, {"a.md", true}, links, messages);
        EXPECT_LT(std::clock() - start, 15 * CLOCKS_PER_SEC) << name;
        EXPECT_LT(document.html.size(), 40 * text.size()) << name;
        EXPECT_LT(deepest(document.html), 200U) << name;
    }
}

TEST(HighlightSize, HugeCodeIsHarmless) {
    constexpr std::size_t size = 20'000;
    for (const char* const piece :
         {"[\n", "${", "$(", "\"", "'", "/*", "<!--", "<a \"", "&a", "a;", "- a", "$ a \\\n"})
        for (const char* const language :
             {"sh", "rust", "yaml", "toml", "make", "html", "css", "console", "md"}) {
            const std::string code = repeat(piece, size);
            const std::clock_t start = std::clock();
            EXPECT_LT(highlight_code(code, language).size(), 40 * size) << language << piece;
            EXPECT_LT(std::clock() - start, 5 * CLOCKS_PER_SEC) << language << piece;
        }
}

std::string told(const std::string& text) {
    OpenLinks links;
    Messages messages;
    render_markdown(text, {"a.md", true}, links, messages);
    return shown(messages);
}

TEST(MarkdownSize, IsToldWhereItIsBounded) {
    EXPECT_EQ(
        told("a\n\n" + std::string(101, '>') + " a"),
        "! 1: nested deeper than 100 levels: shown without further nesting; make it flatter\n");
    EXPECT_EQ(told(std::string(99, '>') + " a"), "");
    EXPECT_EQ(told("a\n\n" + repeat("<div>", 5 * 151)),
              "! 3: HTML nested deeper than 150 levels: shown without further nesting; make it "
              "flatter\n");
    EXPECT_EQ(told(repeat("<div>", 5 * 100'000)),
              "! 1: the document holds too much HTML to be read safely and shows it as text; write "
              "it in Markdown\n");
    EXPECT_EQ(told("[a]: " + std::string(50'000, 'b') + "\n" + repeat("[a]", 30'000)),
              "! 0: the document makes far more page than it has text and is shown as plain text; "
              "split its tables and shorten its addresses\n");
}

} // namespace
} // namespace Lumenfold::Builder
