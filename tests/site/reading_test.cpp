// What the site's files say, and what is made of files that say it wrongly.
#include "site/config_files.h"
#include "site/site_support.h"

#include <chrono>
#include <ctime>
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
        {"", 1},    {"{\"a\": 1", 8},  {"{} // no", 4}, {"[1,]", 4},
        {"nul", 4}, {"[\"\xff\"]", 3}, {"{'a': 1}", 2}, {"[1e999]", 6}};
    for (const auto& [text, byte] : cases) {
        SCOPED_TRACE(text);
        JsonError error;
        EXPECT_FALSE(parse_json(text, &error));
        EXPECT_EQ(error.byte, byte);
        EXPECT_EQ(error.message, parser_words(text));
    }
}

TEST(ParseJson, TakesNoNulByte) {
    for (const std::string& text : {std::string("{}\0", 3), std::string("{\0}", 3),
                                    std::string("[\"\0\"]", 5), std::string("\0{}", 3)}) {
        JsonError error;
        EXPECT_FALSE(parse_json(text, &error));
        EXPECT_EQ(error.byte, text.find('\0') + 1);
        EXPECT_EQ(error.message, "a NUL byte is no part of JSON");
    }
    EXPECT_TRUE(parse_json("[\"\\u0000\"]"));
}

/// The library's own way takes minutes for the larger one, and copies of all the values before.
TEST(ParseJson, TakesTimeInProportionToTheText) {
    const auto seconds = [](std::size_t keys) {
        std::string text = "{";
        for (std::size_t i = 0; i < keys; ++i)
            text += "\"key " + std::to_string(i) + "\": [{}],";
        text += "\"key 0\": 7}";
        const std::clock_t start = std::clock();
        const std::optional<Json> json = parse_json(text);
        const auto time = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        EXPECT_EQ(json->size(), keys);
        EXPECT_EQ(json->front(), 7) << "the last value in the first place";
        return time;
    };
    EXPECT_LT(seconds(40'000), 20 * seconds(5'000)); // eight times the text
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
    const Result refused = write_text_file(dir.path(), "a");
    EXPECT_EQ(refused.error(), dir.path().string() + ": Is a directory");
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

/// What a project's file said is remembered by its time and size, but not while it is so young that
/// a change may leave both as they are.
TEST(ReadProjectInfo, RemembersFilesThatRest) {
    const TempDir dir;
    const fs::path file = dir / ".lumenfold-project";
    const auto slug_after = [&](const std::string& text, fs::file_time_type modified) {
        write_file(file, text);
        fs::last_write_time(file, modified);
        return read_project_info(file).slug;
    };
    const auto now = fs::file_time_type::clock::now();
    EXPECT_EQ(slug_after(R"({"slug": "a"})", now), "a");
    EXPECT_EQ(slug_after(R"({"slug": "b"})", now), "b");
    const auto before = now - std::chrono::hours(1);
    EXPECT_EQ(slug_after(R"({"slug": "c"})", before), "c");
    EXPECT_EQ(slug_after(R"({"slug": "d"})", before), "c") << "the file is not read again";
    EXPECT_EQ(slug_after(R"({"slug": "ee"})", before), "ee");
    EXPECT_EQ(slug_after(R"({"slug": "ff"})", before - std::chrono::nanoseconds(1)), "ff");
    fs::remove(file);
    EXPECT_EQ(read_project_info(file).slug, "");
}

} // namespace
} // namespace Lumenfold
