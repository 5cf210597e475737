// The pages for authors of styles, themes and icons hold for what the lint says today.

#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <sstream>
#include <vector>

namespace {

using TestSupport::TempDir;
using TestSupport::write_file;

std::string output_of(const std::string& command) {
    FILE* const pipe = popen(command.c_str(), "r");
    std::string output;
    for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe))
        output += static_cast<char>(byte);
    pclose(pipe);
    return output;
}

struct Block {
    std::string language;
    std::string text;
    std::size_t line = 0;
};

/// The fenced blocks of a page of docs/.
std::vector<Block> blocks_of(const std::string& page) {
    std::istringstream lines(TestSupport::read_file(SOURCE_ROOT "/docs/" + page));
    std::vector<Block> blocks;
    bool is_open = false;
    std::size_t number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (line.starts_with("```")) {
            is_open = !is_open;
            if (is_open)
                blocks.push_back({line.substr(3), "", number});
        } else if (is_open) {
            blocks.back().text += line + "\n";
        }
    }
    EXPECT_FALSE(is_open);
    EXPECT_FALSE(blocks.empty());
    return blocks;
}

/// What the lint says of a block that stands alone on the framework's own styles.
std::string findings_in(const Block& block) {
    static const std::map<std::string, std::pair<std::string, std::string>> files{
        {"lyr", {"s/", "app.lyr"}}, {"svg", {"i/", "icon.svg"}}, {"json", {"t/", "theme.json"}}};
    const auto& [folder, name] = files.at(block.language);
    const TempDir dir;
    write_file(dir / "i/trash.svg", "<svg><path id=\"a\" fill=\"#000\" d=\"M4 4h16v16z\"/></svg>");
    for (const char* needed : {"s/_", "t/_"})
        write_file(dir / needed, "");
    write_file(dir / (folder + name), block.text);
    const std::string corvel = SOURCE_ROOT "/ext/corvel/";
    std::string output = output_of(
        "cd '" + dir.path().string() + "' && '" CORVEL_LINT "' --widgets " + corvel +
        "styles/widgets --mounts " + corvel + "styles/mounts --styles s --themes t --icons " +
        corvel + "icons --icons i --lists rows,notes,themeSources 2>&1");
    for (std::size_t at; (at = output.find(folder + name)) != std::string::npos;)
        output.erase(at, folder.size());
    return output;
}

// Each message has lines that bring it about, the message, and lines that do not.
TEST(DocsPages, DiagnosticsAreWhatTheLintSays) {
    const std::vector<Block> blocks = blocks_of("diagnostics.md");
    ASSERT_EQ(blocks.size() % 3, 0U);
    for (std::size_t i = 0; i + 2 < blocks.size(); i += 3) {
        SCOPED_TRACE("docs/diagnostics.md:" + std::to_string(blocks[i].line));
        ASSERT_EQ(blocks[i + 1].language, "text");
        EXPECT_NE(blocks[i + 1].text, "");
        EXPECT_EQ(findings_in(blocks[i]), blocks[i + 1].text);
        EXPECT_EQ(findings_in(blocks[i + 2]), "");
    }
}

TEST(DocsPages, ExamplesHaveNoFindings) {
    for (const auto& [page, language] :
         {std::pair("styles.md", "lyr"), std::pair("themes.md", "json"),
          std::pair("icons.md", "svg")})
        for (const Block& block : blocks_of(page)) {
            if (block.language != language)
                continue;
            EXPECT_EQ(findings_in(block), "") << page << ':' << block.line;
        }
}

TEST(DocsPages, AttributesAreThoseOfTheVocabulary) {
    EXPECT_EQ(TestSupport::read_file(SOURCE_ROOT "/docs/attributes.md"),
              output_of("'" CORVEL_LINT "' --attributes"));
}

} // namespace
