#include "site/json_file.h"
#include "site/site_support.h"

#include <optional>

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
    struct Case {
        std::string text;
        std::size_t byte;
    };
    const Case
        cases[] =
            {
                {"", 1},         {"{\"a\": 1", 8},  {"{\"a\" 1}", 6}, {"[1,]", 4},
                {"{} // no", 4}, {"[\"\xff\"]", 3}, {"{'a': 1}", 2},  {"nul", 4},
                {"[1e999]", 0}, // out of range is no parse error to the library
            };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        JsonError error;
        EXPECT_FALSE(parse_json(c.text, &error));
        EXPECT_EQ(error.byte, c.byte);
        EXPECT_EQ(error.message, parser_words(c.text));
        EXPECT_FALSE(parse_json(c.text));
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

TEST(DumpConfig, KeepsOrderAndTextsInTheNormalForm) {
    const std::string text =
        "{ \"z\": [], \"a\": {\"\": null, \"b\": [1, {\"c\": {}}]},\r\n"
        "\"t\": \"é — \\u4e1c \\ud83d\\ude00 \\u0000 \\\" / \\n\", \"n\": [1e2, "
        "0.10, -0.0, 18446744073709551615, 12345678901234567890123]}";
    EXPECT_EQ(normal_form(text), "{\n"
                                 "  \"z\": [],\n"
                                 "  \"a\": {\n"
                                 "    \"\": null,\n"
                                 "    \"b\": [\n"
                                 "      1,\n"
                                 "      {\n"
                                 "        \"c\": {}\n"
                                 "      }\n"
                                 "    ]\n"
                                 "  },\n"
                                 "  \"t\": \"é — 东 😀 \\u0000 \\\" / \\n\",\n"
                                 "  \"n\": [\n"
                                 "    100.0,\n"
                                 "    0.1,\n"
                                 "    -0.0,\n"
                                 "    18446744073709551615,\n"
                                 "    1.2345678901234568e+22\n"
                                 "  ]\n"
                                 "}\n");
}

TEST(WriteConfigFile, LeavesTheFileAloneWhenThereIsNothingToWrite) {
    const TempDir dir;
    write_file(dir / "config", "before");
    Json json = Json::object();
    json["name"] = "\xc3\x28 is no UTF-8";
    EXPECT_FALSE(dump_config(json));
    EXPECT_FALSE(write_config_file(dir / "config", json));
    EXPECT_EQ(read_file(dir / "config"), "before");
}

TEST(WriteTextFile, ReplacesInPlace) {
    const TempDir dir;
    write_file(dir / "file", "much longer than what comes");
    fs::create_hard_link(dir / "file", dir / "same");
    EXPECT_TRUE(write_text_file(dir / "file", std::string_view("a\0\r\n", 4)));
    EXPECT_EQ(read_file(dir / "same"), std::string("a\0\r\n", 4));
    EXPECT_TRUE(write_text_file(dir / "file", ""));
    EXPECT_EQ(fs::file_size(dir / "same"), 0u);
    EXPECT_FALSE(write_text_file(dir / "no-folder" / "file", "a"));
    EXPECT_FALSE(write_text_file(dir.path(), "a"));
}

TEST(WriteTextFile, NoticesALostTailOnlyWhenAsked) {
    const TempDir dir;
    bool opened = false;
    bool complete = true;
    {
        const FileSizeLimit limit(3);
        opened = write_text_file(dir / "opened", "12345", WriteCheck::Opened);
        complete = write_text_file(dir / "complete", "12345", WriteCheck::Complete);
    }
    EXPECT_TRUE(opened);
    EXPECT_FALSE(complete);
    EXPECT_EQ(read_file(dir / "opened"), "123");
}

TEST(ReadTextFile, ReadsFilesOnly) {
    const TempDir dir;
    const std::string text = std::string(40'000, 'x') + std::string("\0\xff\r\n", 4);
    write_file(dir / "file", text);
    EXPECT_EQ(read_text_file(dir / "file"), text);
    write_file(dir / "empty", "");
    EXPECT_EQ(read_text_file(dir / "empty"), "");
    EXPECT_EQ(read_text_file(dir / "missing"), std::nullopt);
    EXPECT_EQ(read_text_file(dir.path()), std::nullopt);
    ASSERT_EQ(::mkfifo((dir / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(read_text_file(dir / "pipe"), std::nullopt) << "and does not wait for a writer";
}

TEST(TextAt, GivesStringsOnly) {
    const Json json =
        Json::parse(R"({"s": "text", "n": 1, "z": null, "a": ["s"], "o": {"s": "x"}})");
    EXPECT_EQ(text_at(json, "s"), "text");
    for (const char* key : {"n", "z", "a", "o", "missing", ""})
        EXPECT_EQ(text_at(json, key), "") << key;
    for (const char* root : {"[\"s\"]", "\"s\"", "null", "1"})
        EXPECT_EQ(text_at(Json::parse(root), "s"), "") << root;
}

TEST(QuoteJsonString, QuotesAnyBytes) {
    EXPECT_EQ(quote_json_string("a \"b\"\n\\ é —"), "\"a \\\"b\\\"\\n\\\\ é —\"");
    EXPECT_EQ(quote_json_string(""), "\"\"");
    EXPECT_EQ(quote_json_string("\xff"), "\"\xEF\xBF\xBD\"");
}

} // namespace
} // namespace Lumenfold
