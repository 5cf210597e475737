#include "site/records.h"
#include "site/site_support.h"

#include <functional>
#include <limits>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::expect_change;
using TestSupport::normal_form;
using TestSupport::on_private_disk;
using TestSupport::parser_words;
using TestSupport::PrivateDisk;
using TestSupport::read_file;
using TestSupport::TempDir;
using TestSupport::write_file;

using Adder = std::function<bool(const fs::path&, std::string*)>;

/// One adder with a full and a sparse record, and what each becomes.
struct AdderCase {
    const char* name;
    const char* parent; ///< the object that holds the list; null for the root
    const char* list;
    Adder full;
    const char* full_element;
    Adder sparse;
    const char* sparse_element;
    std::function<bool(const fs::path&, std::size_t)> remove;
};

template <class Record>
Adder adder(bool (*add)(const fs::path&, const Record&, std::string*), Record record) {
    return [=](const fs::path& path, std::string* error) { return add(path, record, error); };
}

std::vector<AdderCase> adder_cases() {
    const auto removes = [](const char* key) {
        return [=](const fs::path& path, std::size_t at) { return remove_record(path, key, at); };
    };
    return {
        {"dependency", nullptr, "requires",
         adder<DependencyRecord>(add_dependency, {"n", "u", "i", true}),
         R"({"name":"n","url":"u","icon":"i","external":true})",
         adder<DependencyRecord>(add_dependency, {"n", "", "", false}), R"({"name":"n","url":""})",
         removes("requires")},
        {"download", nullptr, "downloads",
         adder<DownloadRecord>(add_download, {"u", "i", "l", "5 MB"}),
         R"({"url":"u","platform_icon":"i","platform_label":"l","size":"5 MB"})",
         adder<DownloadRecord>(add_download, {"u", "", "", ""}),
         R"({"url":"u","platform_label":""})", removes("downloads")},
        {"fact", nullptr, "facts", adder<FactRecord>(add_fact, {"l", "v", "h", "n"}),
         R"({"label":"l","value":"v","href":"h","note":"n"})",
         adder<FactRecord>(add_fact, {"l", "", "", ""}), R"({"label":"l","value":""})",
         removes("facts")},
        {"social", nullptr, "socials", adder<SocialRecord>(add_social, {"l", "@n", "u", "i", true}),
         R"({"label":"l","username":"@n","url":"u","icon":"i","external":true})",
         adder<SocialRecord>(add_social, {"l", "", "", "", false}), R"({"label":"l","url":""})",
         removes("socials")},
        {"policy", nullptr, "policies",
         adder<PolicyRecord>(add_policy, {"s", "n", "t", "f.md", false}),
         R"({"slug":"s","name":"n","title":"t","file":"f.md"})",
         adder<PolicyRecord>(add_policy, {"s", "", "", "", true}),
         R"({"slug":"s","name":"","title":"","file":""})", remove_policy},
        {"topic", "build", "topics", adder<TopicRecord>(add_topic, {"s", "l", "t", "i", "g.md"}),
         R"({"slug":"s","label":"l","title":"t","intro":"i","source":"g.md"})",
         adder<TopicRecord>(add_topic, {"s", "", "", "", "g.md"}),
         R"({"slug":"s","label":"","title":"","source":"g.md"})", remove_topic},
    };
}

/// A document with `list` under the case's key, among keys of all sorts.
std::string document(const AdderCase& c, const std::string& list) {
    const std::string key = "\"" + std::string(c.list) + "\": ";
    std::string text = "{ \"format\": 1, \"unknown\": [{\"z\":1e2,\"a\":null}],\n";
    text += c.parent ? "\"build\": {\"before\": 0, " + key + list + ", \"after\": {}}" : key + list;
    return text + ", \"footer_links\": [ 5, {\"href\": \"s.HTML\"} ], \"last\": \"\\u00e9\"}\n\n";
}

TEST(Adders, AppendTheElementAndRemoversTakeItAway) {
    const TempDir dir;
    const fs::path file = dir / "config";
    for (const AdderCase& c : adder_cases()) {
        SCOPED_TRACE(c.name);
        const std::string link =
            c.list == std::string("policies") ? R"(,{"label":"n","href":"s.html"})" : "";
        for (const bool full : {true, false}) {
            const std::string element = full ? c.full_element : c.sparse_element;
            const std::string before = document(c, R"([7, {"slug": "other"}])");
            std::string after =
                normal_form(document(c, R"([7, {"slug": "other"},)" + element + "]"));
            if (full && !link.empty())
                after = normal_form(after.replace(after.find("s.HTML\"") + 13, 0, link));
            write_file(file, before);
            std::string error;
            EXPECT_TRUE((full ? c.full : c.sparse)(file, &error)) << error;
            EXPECT_EQ(read_file(file), after);

            EXPECT_FALSE(c.remove(file, 3));
            EXPECT_FALSE(c.remove(file, static_cast<std::size_t>(-1)));
            EXPECT_EQ(read_file(file), after) << "an index past the end touches nothing";
            EXPECT_TRUE(c.remove(file, 2));
            EXPECT_EQ(read_file(file), normal_form(before));
        }
    }
}

TEST(Adders, ReplaceWhatIsNoList) {
    const TempDir dir;
    const fs::path file = dir / "config";
    for (const AdderCase& c : adder_cases())
        for (const char* value : {"\"text\"", "null", "5", "true", "{\"0\": 1}"}) {
            SCOPED_TRACE(std::string(c.name) + " in place of " + value);
            write_file(file, document(c, value));
            EXPECT_FALSE(c.remove(file, 0));
            EXPECT_EQ(read_file(file), document(c, value));
            EXPECT_TRUE(c.sparse(file, nullptr));
            EXPECT_EQ(read_file(file),
                      normal_form(document(c, "[" + std::string(c.sparse_element) + "]")));
        }
}

TEST(Adders, SayWhyNot) {
    struct Case {
        const char* text; ///< of the file; null for none
        Adder add;
        std::string words; ///< "PATH" stands for the file's
    };
    const Adder dependency = adder<DependencyRecord>(add_dependency, {"n", "", "", false});
    const Adder policy = adder<PolicyRecord>(add_policy, {"taken", "n", "", "", false});
    const Adder topic = adder<TopicRecord>(add_topic, {"taken", "", "", "", "g.md"});
    const Adder repo = [](const fs::path& path, std::string* error) {
        return add_empty_object(path, "repo", error);
    };
    const std::string later =
        "declares format 2; this Lumenfold reads up to format 1 (update Lumenfold to open it)";
    const Case cases[] = {
        // A required text is missed before the file is looked at.
        {nullptr, adder<DependencyRecord>(add_dependency, {}), "Dependency name is empty."},
        {nullptr, adder<DownloadRecord>(add_download, {}), "Download URL is empty."},
        {nullptr, adder<FactRecord>(add_fact, {}), "Fact label is empty."},
        {nullptr, adder<SocialRecord>(add_social, {}), "Social label is empty."},
        {nullptr, adder<PolicyRecord>(add_policy, {}), "Policy slug is empty."},
        {nullptr, adder<TopicRecord>(add_topic, {}), "Topic slug is empty."},
        {nullptr, adder<TopicRecord>(add_topic, {"s", "", "", "", ""}), "Topic source is empty."},
        {nullptr, dependency, "Cannot open config file: PATH"},
        {nullptr, policy, "Cannot open config file: PATH"},
        {nullptr, repo, "Cannot open config file: PATH"},
        {"{\"a\": }", dependency, "Parse error: " + parser_words("{\"a\": }")},
        {"", policy, "Parse error: " + parser_words("")},
        {"[1e999]", repo, "Parse error: " + parser_words("[1e999]")},
        {"{", topic, "Parse error: " + parser_words("{")},
        {"[]", dependency, "Config root is not a JSON object."},
        {"null", repo, "Config root is not a JSON object."},
        {"\"x\"", topic, "Manifest root is not a JSON object."},
        {R"({"policies": [{"slug": "taken"}]})", policy, "Policy 'taken' already exists."},
        {R"({"build": {"topics": [1, {"slug": "taken"}]}})", topic,
         "Topic 'taken' already exists."},
        {R"({"format": 2})", topic, later},
        {R"({"format": "1"})", topic,
         "'format' must be an integer (this Lumenfold reads up to format 1)"},
    };
    const TempDir dir;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.words);
        const fs::path file = dir / "config";
        fs::remove(file);
        if (c.text)
            write_file(file, c.text);
        std::string words = c.words;
        if (const std::size_t at = words.find("PATH"); at != std::string::npos)
            words.replace(at, 4, file.string());
        std::string error;
        EXPECT_FALSE(c.add(file, &error));
        EXPECT_EQ(error, words);
        EXPECT_FALSE(c.add(file, nullptr));
        EXPECT_EQ(fs::exists(file), c.text != nullptr);
        EXPECT_EQ(read_file(file), c.text ? c.text : "");
    }
    // Deeper than any document of ours: told like a fault of the parser's.
    write_file(dir / "config", std::string(1001, '[') + std::string(1001, ']'));
    std::string error;
    EXPECT_FALSE(dependency(dir / "config", &error));
    EXPECT_EQ(error, "Parse error: nested deeper than 1000 levels");
}

TEST(Adders, TellAFileThatDoesNotOpenForWriting) {
    const bool permitted = on_private_disk("size=64k", [](const PrivateDisk& disk) {
        const fs::path file = disk.path() / "config";
        write_file(file, "{}");
        disk.make_read_only();
        std::string error;
        for (const AdderCase& c : adder_cases()) {
            EXPECT_FALSE(c.full(file, &error));
            EXPECT_EQ(error, (c.parent ? "Cannot write manifest: " : "Cannot write config file: ") +
                                 file.string());
        }
        EXPECT_FALSE(add_empty_object(file, "repo", &error));
        EXPECT_EQ(error, "Cannot write config file: " + file.string());
        EXPECT_FALSE(add_project_entry(file, "x"));
        EXPECT_FALSE(add_home_section(file, Json::object()));
        EXPECT_EQ(create_home_section_fragment(disk.path(), "x"), "");
    });
    if (!permitted)
        GTEST_SKIP() << "mounting is not permitted here";
}

TEST(Adders, RefuseTextsThatAreNotUtf8) {
    const TempDir dir;
    write_file(dir / "config", "{}");
    std::string error;
    EXPECT_FALSE(add_fact(dir / "config", {"caf\xe9", "", "", ""}, &error));
    EXPECT_EQ(error, "Cannot write config file: " + (dir / "config").string());
    EXPECT_EQ(read_file(dir / "config"), "{}");
}

TEST(AddTopic, MakesTheManifest) {
    const TempDir dir;
    const TopicRecord record = {"s", "l", "t", "", "g.md"};
    const std::string element = R"({"slug":"s","label":"l","title":"t","source":"g.md"})";
    const fs::path file = dir / ".lumenfold";
    std::string error;
    ASSERT_TRUE(add_topic(file, record, &error)) << error;
    EXPECT_EQ(read_file(file), normal_form(R"({"format":1,"build":{"topics":[)" + element + "]}}"));

    write_file(file, R"({"project": 1, "build": "x"})");
    ASSERT_TRUE(add_topic(file, record, &error)) << error;
    EXPECT_EQ(read_file(file),
              normal_form(R"({"format":1,"project":1,"build":{"topics":[)" + element + "]}}"));

    const fs::path homeless = dir / "no-source" / ".lumenfold";
    EXPECT_FALSE(add_topic(homeless, record, &error));
    EXPECT_EQ(error, "Cannot write manifest: " + homeless.string());
    EXPECT_FALSE(add_topic(dir.path(), record, &error)) << "a folder in the way";
    EXPECT_EQ(error, "Cannot write manifest: " + dir.path().string());
}

TEST(AddPolicy, LinksThePageFromTheFooter) {
    const auto add = [](bool skip_link) {
        return [=](const fs::path& file) {
            return add_policy(file, {"s", "n", "t", "f", skip_link}, nullptr);
        };
    };
    expect_change(R"({"policies": [{"name": "no slug"}], "footer_links": "lost"})",
                  R"({"policies":[{"name":"no slug"},
                                  {"slug":"s","name":"n","title":"t","file":"f"}],
                      "footer_links":[{"label":"n","href":"s.html"}]})",
                  add(false));
    expect_change(R"({"footer_links": "kept"})",
                  R"({"footer_links":"kept",
                      "policies":[{"slug":"s","name":"n","title":"t","file":"f"}]})",
                  add(true));
}

TEST(RemovePolicy, TakesItsExactLinksAlong) {
    const char* cases[][2] = {
        {R"({"policies":[{"slug":"s"},1],"footer_links":[{"href":"s.html"},{"href":"/s.html"},
             "s.html",{"href":"S.html"},{"href":"s.html","label":"again"},{}]})",
         R"({"policies":[1],"footer_links":[{"href":"/s.html"},"s.html",{"href":"S.html"},{}]})"},
        {R"({"policies":[{"slug":""}],"footer_links":[{"href":".html"}]})",
         R"({"policies":[],"footer_links":[{"href":".html"}]})"},
        {R"({"policies":[{"slug":5}],"footer_links":{"href":"5.html"}})",
         R"({"policies":[],"footer_links":{"href":"5.html"}})"},
        {R"({"policies":["s"]})", R"({"policies":[]})"},
    };
    for (const auto& [before, after] : cases)
        expect_change(before, after, [](const fs::path& file) { return remove_policy(file, 0); });
}

TEST(RemoveTopic, AddsTheMissingFormat) {
    const auto remove = [](const fs::path& file) { return remove_topic(file, 0); };
    expect_change(R"({"build": {"topics": [1, 2]}})", R"({"format":1,"build":{"topics":[2]}})",
                  remove);
    expect_change(R"({"build": [{"topics": [1]}]})", nullptr, remove);
}

TEST(AddEmptyObject, SetsTheKey) {
    expect_change(R"({"slug": "s", "repo": 5, "z": 1})", R"({"slug":"s","repo":{},"z":1})",
                  [](const fs::path& file) { return add_empty_object(file, "repo", nullptr); });
}

TEST(ProjectEntries, AreComparedAsPaths) {
    const TempDir dir;
    const fs::path site = dir / ".lumenfold-site";
    write_file(dir / "projects" / "a" / "config", "{}");
    const std::string before =
        R"({"projects": [{"config": "./projects/a/config", "x": 1}, "b", {"config": 5}, {}]})";
    write_file(site, before);
    for (const char* same : {"projects/a/config", "./projects/../projects/a//config"})
        EXPECT_TRUE(add_project_entry(site, same));
    EXPECT_EQ(read_file(site), before) << "registered already: nothing is rewritten";

    EXPECT_TRUE(add_project_entry(site, "./projects/b/config"));
    EXPECT_EQ(read_file(site),
              normal_form(R"({"projects":[{"config":"./projects/a/config","x":1},"b",
                              {"config":5},{},{"config":"./projects/b/config"}]})"));
    EXPECT_TRUE(remove_projects(site, {dir / "projects" / "b" / ".." / "a" / "config",
                                       dir / "projects" / "b" / "config", dir / "none"}));
    EXPECT_EQ(read_file(site), normal_form(R"({"projects":["b",{"config":5},{}]})"));

    const auto add = [](const fs::path& file) { return add_project_entry(file, "c"); };
    const auto remove = [](const fs::path& file) { return remove_projects(file, {"/c"}); };
    expect_change(R"({"projects": 5})", R"({"projects":[{"config":"c"}]})", add);
    expect_change(R"({"projects": 5})", nullptr, remove);
    for (const char* root : {"[]", "{", "null"}) {
        expect_change(root, nullptr, add);
        expect_change(root, nullptr, remove);
    }
    EXPECT_FALSE(add_project_entry(dir / "missing", "c"));
    EXPECT_FALSE(fs::exists(dir / "missing"));
}

TEST(HomeSections, AddMoveAndRemove) {
    const auto sections = [](const std::string& list) {
        return R"({"home":{"hero":1,"sections":[)" + list + R"(]},"z":0})";
    };
    const auto add = [](const fs::path& file) { return add_home_section(file, Json(7)); };
    expect_change(R"({"home": {"hero": 1, "sections": null}, "z": 0})", sections("7").c_str(), add);
    expect_change(R"({"home": ["sections"]})", R"({"home":{"sections":[7]}})", add);
    expect_change("[]", nullptr, add);

    struct Move {
        std::size_t index;
        int delta;
        const char* after; ///< null where it is refused
    };
    // clang-format off
    const Move moves[] = {
        {0, 1, "2,1,3,4"}, {3, -1, "1,2,4,3"}, {0, 3, "2,3,4,1"}, {3, -3, "4,1,2,3"},
        {1, 0, "1,2,3,4"}, {0, -1, nullptr}, {3, 1, nullptr}, {4, -1, nullptr}, {0, 4, nullptr},
        {static_cast<std::size_t>(-1), 1, nullptr},
        {2, std::numeric_limits<int>::max(), nullptr}, {2, std::numeric_limits<int>::min(), nullptr},
    };
    // clang-format on
    for (const Move& m : moves) {
        SCOPED_TRACE(std::to_string(m.index) + " by " + std::to_string(m.delta));
        const std::string after = sections(m.after ? m.after : "");
        expect_change(
            sections("1,2,3,4"), m.after ? after.c_str() : nullptr,
            [&](const fs::path& file) { return move_home_section(file, m.index, m.delta); });
    }
    const auto remove = [](std::size_t index) {
        return [=](const fs::path& file) { return remove_home_section(file, index); };
    };
    expect_change(sections("1,2"), sections("2").c_str(), remove(0));
    expect_change(sections("1,2"), nullptr, remove(2));
    expect_change(R"({"home": ["sections"]})", nullptr, remove(0));
}

TEST(UniqueSectionId, CountsUntilItIsFree) {
    const TempDir dir;
    const fs::path site = dir / "site";
    write_file(site, R"({"home": {"sections": [{"id": "a"}, {"id": "a-2"}, {"id": "section"}, {},
                         {"id": 5}, "a-3", {"id": "b-2"}]}})");
    EXPECT_EQ(unique_section_id(site, "a"), "a-3");
    EXPECT_EQ(unique_section_id(site, "b"), "b");
    EXPECT_EQ(unique_section_id(site, ""), "section-2");
    EXPECT_EQ(unique_section_id(site, slugify("東京!")), "section-2");
    for (const char* text : {"{", "[]", R"({"home": 1})"}) {
        write_file(site, text);
        EXPECT_EQ(unique_section_id(site, "a"), "a") << text;
    }
    EXPECT_EQ(unique_section_id(dir / "missing", ""), "section");
}

TEST(HomeSectionFragment, IsMadeOnce) {
    const TempDir dir;
    const fs::path file = dir / "content-fragments" / "intro_home.html";
    EXPECT_EQ(create_home_section_fragment(dir.path(), "intro"),
              "/content-fragments/intro_home.html");
    EXPECT_EQ(read_file(file), "<section>\n  <div class=\"section_content slim\">\n"
                               "    <p>New custom section — edit "
                               "content-fragments/intro_home.html.</p>\n  </div>\n</section>\n");
    write_file(file, "mine");
    EXPECT_EQ(create_home_section_fragment(dir.path(), "intro"),
              "/content-fragments/intro_home.html");
    EXPECT_EQ(read_file(file), "mine");

    fs::create_directories(dir / "content-fragments" / "folder_home.html");
    EXPECT_EQ(create_home_section_fragment(dir.path(), "folder"), "") << "a folder in the way";
    write_file(dir / "other" / "content-fragments", "a file in the way");
    EXPECT_EQ(create_home_section_fragment(dir / "other", "x"), "");
}

TEST(TextHelpers, SlugifyAndTrim) {
    // clang-format off
    const char* slugs[][2] = {
        {"Hello, World!", "hello-world"}, {"", ""}, {"---", ""}, {"東京", ""}, {"  A  b  ", "a-b"},
        {"über-uns", "ber-uns"}, {"Z9", "z9"}, {"C++ & C#", "c-c"}, {"a\nb", "a-b"}, {"@[`{", ""},
    };
    // clang-format on
    for (const auto& [text, slug] : slugs)
        EXPECT_EQ(slugify(text), slug) << text;
    const char* trimmed[][2] = {
        {" \t a b\t ", "a b"}, {"\n a \n", "\n a \n"}, {"\t \t", ""}, {"", ""}, {"a", "a"},
    };
    for (const auto& [text, rest] : trimmed)
        EXPECT_EQ(trim(text), rest) << text;
}

} // namespace
} // namespace Lumenfold
