// What the site's files say, and what is made of files that say it wrongly.
#include "site/config_files.h"
#include "site/site_support.h"

#include <sys/stat.h>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::FileSizeLimit;
using TestSupport::normal_form;
using TestSupport::parser_words;
using TestSupport::read_file;
using TestSupport::TempDir;
using TestSupport::write_file;

std::string nested(std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
}

TEST(ParseJson, TellsWhyATextIsNoDocument) {
    const std::pair<std::string, std::size_t> cases[] = {
        {"", 1},           {"{\"a\": 1", 8}, {"{} // no", 4}, {"[1,]", 4}, {"nul", 4},
        {"[\"\xff\"]", 3}, {"{'a': 1}", 2},  {"[1e999]", 0}}; // out of range is no parse error to
                                                              // the library
    for (const auto& [text, byte] : cases) {
        SCOPED_TRACE(text);
        JsonError error;
        EXPECT_FALSE(parse_json(text, &error));
        EXPECT_EQ(error.byte, byte);
        EXPECT_EQ(error.message, parser_words(text));
    }
}

TEST(ParseJson, RefusesTheLevelAfterAThousand) {
    EXPECT_TRUE(parse_json(nested(1000)));
    JsonError error;
    EXPECT_FALSE(parse_json(nested(1001), &error));
    EXPECT_EQ(error.byte, 1001u);
    EXPECT_FALSE(parse_json(nested(3'000'000)));
    EXPECT_FALSE(parse_json(std::string(2'000'000, '{')));
    // Brackets within texts and lists side by side are no levels.
    EXPECT_TRUE(
        parse_json("[\"" + std::string(5000, '[') + "\\\"" + std::string(5000, '{') + "\"]"));
    std::string siblings = "[";
    for (int i = 0; i < 5000; ++i)
        siblings += "[{}],";
    EXPECT_TRUE(parse_json(siblings + "1]"));
}

TEST(WriteFile, ReplacesInPlaceOrLeavesTheFileAlone) {
    const TempDir dir;
    Json json = Json::object();
    json["b"] = {1, "é — \n\""};
    json["a"] = Json::object();
    write_file(dir / "file", "much longer than what comes, and of another order");
    fs::create_hard_link(dir / "file", dir / "same");
    EXPECT_TRUE(write_config_file(dir / "file", json));
    EXPECT_EQ(read_file(dir / "same"),
              "{\n  \"b\": [\n    1,\n    \"é — \\n\\\"\"\n  ],\n  \"a\": {}\n}\n");
    json["name"] = "\xc3\x28 is no UTF-8";
    EXPECT_FALSE(write_config_file(dir / "file", json));
    EXPECT_GT(fs::file_size(dir / "same"), 0u);
    EXPECT_FALSE(write_text_file(dir / "no-folder/file", "a"));
    EXPECT_FALSE(write_text_file(dir.path(), "a"));
    bool opened = false;
    bool complete = true;
    {
        const FileSizeLimit limit(3);
        opened = write_text_file(dir / "opened", "12345", WriteCheck::Opened);
        complete = write_text_file(dir / "complete", "12345", WriteCheck::Complete);
    }
    EXPECT_TRUE(opened && !complete) << "a lost tail is noticed only when asked for";
}

TEST(ReadTextFile, ReadsFilesOnly) {
    const TempDir dir;
    const std::string text = std::string(40'000, 'x') + std::string("\0\xff\r\n", 4);
    write_file(dir / "file", text);
    EXPECT_EQ(read_text_file(dir / "file"), text);
    EXPECT_EQ(read_text_file(dir / "missing"), std::nullopt);
    EXPECT_EQ(read_text_file(dir.path()), std::nullopt);
    ASSERT_EQ(::mkfifo((dir / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(read_text_file(dir / "pipe"), std::nullopt) << "and does not wait for a writer";
}

} // namespace
} // namespace Lumenfold
