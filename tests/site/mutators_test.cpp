// Every operation that changes one file. Its cases stand in cases/mutators.txt: the operation with
// its arguments between "|"; "<", the file before, or none; then ">", the document after, or "!",
// the words of a refusal that leaves every byte. FILE and DIR stand for the paths, a trailing "…"
// for more words of the parser, an indented line continues the last one.
#include "site/creation.h"
#include "site/records.h"
#include "site/site_support.h"
#include "site/versions.h"

#include <fstream>
#include <functional>
#include <map>
#include <set>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::file_tree;
using TestSupport::normal_form;
using TestSupport::read_file;
using TestSupport::ReadOnly;
using TestSupport::TempDir;
using TestSupport::write_file;

/// The arguments of an operation; empty where there are none left.
struct Arguments {
    std::vector<std::string> texts;
    std::string operator[](std::size_t i) const { return i < texts.size() ? texts[i] : ""; }
    std::size_t index(std::size_t i) const {
        return static_cast<std::size_t>(std::stoll(texts[i]));
    }
    bool flag(std::size_t i) const { return (*this)[i] == "yes"; }
};

Arguments arguments_of(const std::string& text) {
    Arguments arguments;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find('|', at), text.size());
        arguments.texts.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return arguments;
}

using F = const fs::path&;
using A = const Arguments&;
using E = std::string*;
using Operation = std::function<bool(F file, A arguments, E error)>;

/// Projects beside the file, for the operations on registries.
const std::pair<const char*, const char*> PROJECTS[] = {
    {"core", R"({"slug": "core"})"},
    {"core-x", R"({"slug": "x", "parent_slug": "core"})"},
    {"zed", R"({"slug": "zed"})"},
    {"zed-taken", "{}"},
    {"broken", "{"},
    {"list", R"(["slug"])"},
    {"bare", "{}"},
    {"empty", R"({"slug": ""})"},
    {"number", R"({"slug": 5})"},
};

fs::path project_of(const fs::path& site, const std::string& name) {
    return site.parent_path() / "projects" / name / ".lumenfold-project";
}

void write_projects(const fs::path& root) {
    for (const auto& [name, text] : PROJECTS)
        write_file(project_of(root / "file", name), text);
    write_file(root / "projects/blocked", "a file in the way");
}

const std::map<std::string, Operation>& operations() {
    // clang-format off
    static const std::map<std::string, Operation> all = {
        {"add_dependency", [](F f, A a, E e) { return add_dependency(f, {a[0], a[1], a[2], a.flag(3)}, e); }},
        {"add_download", [](F f, A a, E e) { return add_download(f, {a[0], a[1], a[2], a[3]}, e); }},
        {"add_fact", [](F f, A a, E e) { return add_fact(f, {a[0], a[1], a[2], a[3]}, e); }},
        {"add_social", [](F f, A a, E e) { return add_social(f, {a[0], a[1], a[2], a[3], a.flag(4)}, e); }},
        {"add_policy", [](F f, A a, E e) { return add_policy(f, {a[0], a[1], a[2], a[3], a.flag(4)}, e); }},
        {"add_topic", [](F f, A a, E e) { return add_topic(f, {a[0], a[1], a[2], a[3], a[4]}, e); }},
        {"add_empty_object", [](F f, A a, E e) { return add_empty_object(f, a[0], e); }},
        {"add_project_entry", [](F f, A a, E) { return add_project_entry(f, a[0]); }},
        {"add_home_section", [](F f, A a, E) { return add_home_section(f, Json::parse(a[0])); }},
        {"move_home_section", [](F f, A a, E) { return move_home_section(f, a.index(0), std::stoi(a[1])); }},
        {"remove_home_section", [](F f, A a, E) { return remove_home_section(f, a.index(0)); }},
        {"remove_record", [](F f, A a, E) { return remove_record(f, a[0], a.index(1)); }},
        {"remove_topic", [](F f, A a, E) { return remove_topic(f, a.index(0)); }},
        {"remove_policy", [](F f, A a, E) { return remove_policy(f, a.index(0)); }},
        {"remove_projects", [](F f, A a, E) { return remove_projects(f, {f.parent_path() / a[0]}); }},
        {"include_version", [](F f, A a, E) { return include_version(f, a[0], a[1]); }},
        {"exclude_version", [](F f, A a, E) { return exclude_version(f, a[0]); }},
        {"create_project", [](F f, A a, E e) { return create_project(f, {a[0], a[1], a[2], a[3], a[4]}, nullptr, e); }},
        {"promote", [](F f, A a, E e) { return promote_to_family(f, project_of(f, a[0]), a[1], "L", nullptr, nullptr, e); }},
    };
    // clang-format on
    return all;
}

struct Case {
    std::string where, operation;
    Arguments arguments;
    std::optional<std::string> before;
    char outcome = '>';
    std::string expected;
};

std::vector<Case> read_cases() {
    std::vector<Case> cases;
    std::ifstream in(SOURCE_ROOT "/tests/site/cases/mutators.txt");
    std::string* last = nullptr;
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (line.empty() || line.starts_with("#"))
            continue;
        const std::string rest = line.size() > 2 ? line.substr(2) : std::string();
        if (line[0] == ' ') {
            *last += line;
        } else if (line[0] == '<') {
            last = &cases.back().before.emplace(rest);
        } else if (line[0] == '>' || line[0] == '!') {
            cases.back().outcome = line[0];
            last = &(cases.back().expected = rest);
        } else {
            const std::size_t blank = std::min(line.find(' '), line.size());
            cases.push_back({"mutators.txt:" + std::to_string(number),
                             line.substr(0, blank),
                             arguments_of(blank < line.size() ? line.substr(blank + 1) : ""),
                             {},
                             {},
                             {}});
        }
    }
    return cases;
}

TEST(Mutators, ChangeOneFileOrLeaveEveryByte) {
    const std::vector<Case> cases = read_cases();
    EXPECT_GT(cases.size(), 80u);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.where + ": " + c.operation);
        const TempDir dir;
        const fs::path file = dir / "file";
        if (c.operation == "create_project" || c.operation == "promote")
            write_projects(dir.path());
        if (c.before)
            write_file(file, *c.before);
        const auto before = file_tree(dir.path());
        std::string error;
        const bool done = operations().at(c.operation)(file, c.arguments, &error);
        EXPECT_EQ(done, c.outcome == '>');
        if (c.outcome == '>') {
            EXPECT_EQ(read_file(file), normal_form(c.expected));
            continue;
        }
        std::string words = c.expected;
        if (const std::size_t at = words.find("FILE"); at != std::string::npos)
            words.replace(at, 4, file.string());
        if (const std::size_t at = words.find("DIR"); at != std::string::npos)
            words.replace(at, 3, dir.path().string());
        if (const std::size_t more = words.find("…"); more != std::string::npos) {
            words.resize(more);
            error.resize(std::min(more, error.size()));
        }
        EXPECT_EQ(error, words);
        EXPECT_FALSE(operations().at(c.operation)(file, c.arguments, nullptr));
        EXPECT_EQ(file_tree(dir.path()), before);
    }
}

/// Arguments with which each operation does something to `WHOLE`.
const std::pair<const char*, const char*> SAMPLES[] = {
    {"add_dependency", "n|u|i|yes"}, {"add_download", "u|i|l|s"},  {"add_fact", "l|v|h|n"},
    {"add_social", "l|n|u|i|yes"},   {"add_policy", "s|n|t|f"},    {"add_topic", "s|l|t|i|f"},
    {"add_empty_object", "repo"},    {"add_project_entry", "./p"}, {"add_home_section", "{}"},
    {"move_home_section", "0|0"},    {"remove_home_section", "0"}, {"remove_record", "facts|0"},
    {"remove_topic", "0"},           {"remove_policy", "0"},       {"remove_projects", "file"},
    {"include_version", "1.0|D"},    {"exclude_version", "1.0"},
};

constexpr const char* WHOLE =
    R"({"title": "T", "branding": {}, "footer_links": [{"href": "s.html"}],
    "projects": [{"config": "file"}], "socials": [], "policies": [{"slug": "p"}],
    "home": {"sections": [{"type": "custom", "id": "a"}]}, "slug": "s", "requires": [],
    "downloads": [], "facts": [{"label": "License", "value": "MIT"}],
    "versions": [{"label": "0.9"}], "versions_excluded": ["1.0"], "build": {"topics": [{"slug": "t"}]}})";

TEST(Mutators, TellAFileThatDoesNotOpenForWriting) {
    const TempDir dir;
    write_file(dir / "file", WHOLE);
    const auto before = file_tree(dir.path());
    const ReadOnly read_only(dir.path());
    for (const auto& [name, arguments] : SAMPLES) {
        std::string error;
        EXPECT_FALSE(operations().at(name)(dir / "file", arguments_of(arguments), &error)) << name;
        const std::string words = name == std::string("add_topic") ? "Cannot write manifest: "
                                  : std::string(name).starts_with("add_") && !error.empty()
                                      ? "Cannot write config file: "
                                      : "";
        EXPECT_EQ(error, words.empty() ? "" : words + (dir / "file").string()) << name;
    }
    EXPECT_EQ(create_home_section_fragment(dir.path(), "x"), "");
    EXPECT_EQ(file_tree(dir.path()), before);
}

/// Every key with values of every type: no operation throws, and a refusal changes nothing.
TEST(Mutators, TakeAnyTypeUnderAnyKey) {
    const Json whole = Json::parse(WHOLE);
    std::set<std::string> pointers = {""};
    const Json leaves = whole.flatten();
    for (const auto& [leaf, value] : leaves.items())
        for (std::string at = leaf; !at.empty(); at.erase(at.rfind('/')))
            pointers.insert(at);
    const TempDir dir;
    const fs::path file = dir / "file";
    for (const std::string& pointer : pointers)
        for (const char* value : {"null", "-1", "\"s\"", "[]", "[null, [[]], {\"a\": 1}, \"s\"]",
                                  "{\"0\": {\"slug\": [\"s\"]}}"}) {
            Json json = whole;
            json[Json::json_pointer(pointer)] = Json::parse(value);
            for (const auto& [name, arguments] : SAMPLES) {
                SCOPED_TRACE(std::string(name) + " with " + value + " at " + pointer);
                write_file(file, json.dump());
                bool done = false;
                ASSERT_NO_THROW(done =
                                    operations().at(name)(file, arguments_of(arguments), nullptr));
                const std::string after = read_file(file);
                EXPECT_EQ(after == json.dump(), !done);
                EXPECT_TRUE(parse_json(after));
            }
        }
}

/// What rewriting could lose: order, spelling of texts and numbers, keys, depth.
TEST(Mutators, LeaveTheRestOfADocumentAsItIs) {
    const TempDir dir;
    const fs::path file = dir / "file";
    for (const std::string& text : {
             std::string("\xEF\xBB\xBF{\"facts\":[]}"),
             std::string(
                 "{\"facts\" :\r\n\t[ ] ,\"\":{\"\":[]},\"a b\":\"\\/\\b\\u007f\\u2028é\"}"),
             std::string("{\"z\":1,\"a\":2,\"facts\":[],\"0\":3,\"z\":4}"),
             std::string(R"({"facts":[],"n":[1E+2,-0,-0.0,0.1,5e-324,9007199254740993,
                            -9223372036854775808,18446744073709551615,1234567890123456789012345]})"),
             std::string("{\"facts\":[{\"x\":{}}],\"t\":[[],{},null,true,\"\\u0000\"]}"),
             "{\"facts\":[],\"deep\":" + std::string(998, '[') + std::string(998, ']') + "}",
             "{\"facts\":[],\"long\":\"" + std::string(100'000, 'x') + "\"}",
         }) {
        SCOPED_TRACE(text.substr(0, 100));
        write_file(file, text);
        const std::size_t size = (*read_json_file(file))["facts"].size();
        ASSERT_TRUE(add_fact(file, {"new", "v", "", ""}, nullptr));
        ASSERT_TRUE(remove_record(file, "facts", size));
        EXPECT_EQ(read_file(file), normal_form(text));
        EXPECT_EQ(normal_form(normal_form(text)), normal_form(text));
    }
}

TEST(Mutators, ComparePathsNotTheirSpelling) {
    const TempDir dir;
    const fs::path site = dir / ".lumenfold-site";
    write_file(dir / "projects/a/config", "{}");
    const std::string before =
        R"({"projects": [{"config": "./projects/a/config", "x": 1}, "b", {}]})";
    write_file(site, before);
    for (const char* same : {"projects/a/config", "./projects/../projects/a//config"})
        EXPECT_TRUE(add_project_entry(site, same));
    EXPECT_EQ(read_file(site), before) << "registered already: nothing is rewritten";
    EXPECT_TRUE(remove_projects(site, {dir / "projects/b/../a/config", dir / "none"}));
    EXPECT_EQ(read_file(site), normal_form(R"({"projects":["b",{}]})"));
}

TEST(UniqueSectionId, CountsUntilItIsFree) {
    const TempDir dir;
    const fs::path site = dir / "site";
    write_file(site, R"({"home": {"sections": [{"id": "a"}, {"id": "a-2"}, {"id": "section"}, {},
                         {"id": 5}, "a-3", {"id": "b-2"}]}})");
    EXPECT_EQ(unique_section_id(site, "a"), "a-3");
    EXPECT_EQ(unique_section_id(site, "b"), "b");
    EXPECT_EQ(unique_section_id(site, slugify("東京!")), "section-2");
    EXPECT_EQ(unique_section_id(dir / "missing", ""), "section");
}

TEST(HomeSectionFragment, IsMadeOnce) {
    const TempDir dir;
    const fs::path file = dir / "content-fragments/intro_home.html";
    write_file(file, "mine");
    EXPECT_EQ(create_home_section_fragment(dir.path(), "intro"),
              "/content-fragments/intro_home.html");
    EXPECT_EQ(read_file(file), "mine");
    fs::create_directories(dir / "content-fragments/folder_home.html");
    EXPECT_EQ(create_home_section_fragment(dir.path(), "folder"), "") << "a folder in the way";
}

TEST(Trim, CutsBlanksAndTabsOnly) {
    EXPECT_EQ(trim(" \t a b\t "), "a b");
    EXPECT_EQ(trim("\n a \n"), "\n a \n");
}

} // namespace
} // namespace Lumenfold
