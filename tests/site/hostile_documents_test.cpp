#include "site/config_files.h"
#include "site/creation.h"
#include "site/records.h"
#include "site/site_support.h"
#include "site/versions.h"

#include <functional>
#include <vector>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::file_tree;
using TestSupport::normal_form;
using TestSupport::read_file;
using TestSupport::TempDir;
using TestSupport::write_file;

struct Operation {
    const char* name;
    std::function<bool(const fs::path&)> run;
};

std::vector<Operation> mutators() {
    return {
        {"dependency",
         [](const fs::path& f) {
             return add_dependency(f, {"n", "u", "i", true}, nullptr);
         }},
        {"download",
         [](const fs::path& f) {
             return add_download(f, {"u", "i", "l", "s"}, nullptr);
         }},
        {"fact",
         [](const fs::path& f) {
             return add_fact(f, {"l", "v", "h", "n"}, nullptr);
         }},
        {"social",
         [](const fs::path& f) {
             return add_social(f, {"l", "n", "u", "i", true}, nullptr);
         }},
        {"policy",
         [](const fs::path& f) {
             return add_policy(f, {"s", "n", "t", "f", false}, nullptr);
         }},
        {"topic",
         [](const fs::path& f) {
             return add_topic(f, {"s", "l", "t", "i", "f"}, nullptr);
         }},
        {"object", [](const fs::path& f) { return add_empty_object(f, "repo", nullptr); }},
        {"entry", [](const fs::path& f) { return add_project_entry(f, "./p"); }},
        {"section", [](const fs::path& f) { return add_home_section(f, Json::object()); }},
        {"move", [](const fs::path& f) { return move_home_section(f, 0, 0); }},
        {"remove section", [](const fs::path& f) { return remove_home_section(f, 0); }},
        {"remove record", [](const fs::path& f) { return remove_record(f, "facts", 0); }},
        {"remove topic", [](const fs::path& f) { return remove_topic(f, 0); }},
        {"remove policy", [](const fs::path& f) { return remove_policy(f, 0); }},
        {"remove projects", [](const fs::path& f) { return remove_projects(f, {f}); }},
        {"include", [](const fs::path& f) { return include_version(f, "1.0", "D"); }},
        {"exclude", [](const fs::path& f) { return exclude_version(f, "1.0"); }},
    };
}

/// Every key of every file, by pointer.
constexpr const char* POINTERS[] = {
    "",
    "/format",
    "/title",
    "/branding",
    "/footer_links",
    "/footer_links/0",
    "/projects",
    "/projects/0",
    "/projects/0/config",
    "/socials",
    "/policies",
    "/policies/0",
    "/policies/0/slug",
    "/home",
    "/home/sections",
    "/home/sections/0",
    "/home/sections/0/id",
    "/slug",
    "/parent_slug",
    "/name",
    "/requires",
    "/downloads",
    "/facts",
    "/facts/0",
    "/facts/0/label",
    "/facts/0/value",
    "/versions",
    "/versions/0",
    "/versions/0/label",
    "/versions_excluded",
    "/build",
    "/build/topics",
    "/build/topics/0",
    "/build/topics/0/slug",
    "/tag",
};
constexpr const char* VALUES[] = {
    "null", "-1", "\"s\"", "[]", "[null, [[]], {\"a\": 1}, \"s\"]", "{\"0\": {\"slug\": [\"s\"]}}"};

TEST(HostileDocuments, NeverThrowAndFailWithoutAChange) {
    const Json whole =
        Json::parse(R"({"title": "T", "branding": {}, "footer_links": [{"href": "s.html"}],
        "projects": [{"config": "self"}], "socials": [], "policies": [{"slug": "p"}],
        "home": {"sections": [{"type": "custom", "id": "a"}]}, "slug": "s", "parent_slug": "",
        "name": "N", "requires": [], "downloads": [], "facts": [{"label": "License", "value": "MIT"}],
        "versions": [{"label": "0.9"}], "versions_excluded": ["1.0"],
        "build": {"topics": [{"slug": "t"}]}, "tag": "1.0.0"})");
    const TempDir dir;
    const fs::path file = dir / "self";
    for (const char* pointer : POINTERS)
        for (const char* value : VALUES) {
            Json json = whole;
            json[Json::json_pointer(pointer)] = Json::parse(value);
            const std::string text = json.dump();
            for (const Operation& operation : mutators()) {
                SCOPED_TRACE(std::string(operation.name) + " with " + value + " at " + pointer);
                write_file(file, text);
                bool done = false;
                ASSERT_NO_THROW(done = operation.run(file));
                const std::string after = read_file(file);
                if (done)
                    EXPECT_TRUE(after == text || after == normal_form(after));
                else
                    EXPECT_EQ(after, text);
            }
        }
}

TEST(HostileDocuments, AreReadWithoutAThrow) {
    const TempDir dir;
    const fs::path file = dir / ".lumenfold-project";
    fs::create_hard_link((write_file(file, ""), file), dir / ".lumenfold-built");
    fs::create_hard_link(file, dir / "config");
    for (const char* pointer : POINTERS)
        for (const char* value : VALUES) {
            SCOPED_TRACE(std::string(value) + " at " + pointer);
            Json json = Json::object();
            try {
                json[Json::json_pointer(pointer)] = Json::parse(value);
            } catch (const Json::exception&) {
                continue;
            }
            write_file(file, json.dump());
            BuiltRecord record;
            ASSERT_NO_THROW({
                classify_config(dir / "config");
                check_format(file, nullptr);
                read_title(file, ConfigKind::Site);
                read_title(file, ConfigKind::Project);
                read_project_info(".lumenfold-project", dir.path());
                read_home_sections(file);
                unique_section_id(file, "a");
                read_built_record(dir.path(), record, nullptr);
                load_manifest(file, json, nullptr);
            });
            std::string error;
            ASSERT_NO_THROW(create_project(file, {"N", "a/b", "", "", ""}, nullptr, &error));
            ASSERT_NO_THROW(create_project(file, {"N", "n", "", "s", ""}, nullptr, &error));
            ASSERT_NO_THROW(promote_to_family(file, file, "core", "", nullptr, nullptr, &error));
        }
}

/// A whole document whose rewriting could lose something.
constexpr const char* DOCUMENTS[] = {
    "\xEF\xBB\xBF{\"facts\":[]}",
    "{\"facts\" :\r\n\t[ ] ,\"\":{\"\":[]},\"a b\":\"\\/\\b\\f\\u007f\\u2028é\\ud83d\\ude00\"}",
    "{\"z\":1,\"a\":2,\"facts\":[],\"0\":3,\"z\":4}",
    R"({"facts":[],"n":[1E+2,-0,-0.0,0.1,1e-7,5e-324,1.7976931348623157e308,9007199254740993]})",
    R"({"facts":[],"n":[-9223372036854775808,18446744073709551615,1234567890123456789012345]})",
    "{\"facts\":[{\"label\":\"License\",\"value\":\"\\u0000\",\"x\":{}}],\"t\":[[],{},null,true]}",
};

TEST(RoundTrips, LeaveTheNormalFormOfTheDocument) {
    const TempDir dir;
    const fs::path file = dir / "config";
    std::vector<std::string> documents(std::begin(DOCUMENTS), std::end(DOCUMENTS));
    documents.push_back("{\"facts\":[],\"deep\":" + std::string(998, '[') + std::string(998, ']') +
                        "}");
    documents.push_back("{\"facts\":[],\"long\":\"" + std::string(100'000, 'x') + "\"}");
    for (const std::string& text : documents) {
        SCOPED_TRACE(text.substr(0, 100));
        write_file(file, text);
        const std::string normal = normal_form(text);
        EXPECT_EQ(normal_form(normal), normal);
        const std::size_t size = (*read_json_file(file))["facts"].size();
        ASSERT_TRUE(add_fact(file, {"new", "v", "", ""}, nullptr));
        ASSERT_TRUE(remove_record(file, "facts", size));
        EXPECT_EQ(read_file(file), normal);
    }
}

TEST(RoundTrips, LeaveTheExampleSiteAsItIs) {
    const TempDir dir;
    const fs::path root = dir / "site";
    fs::copy(fs::path(SOURCE_ROOT) / "examples" / "tidewater", root, fs::copy_options::recursive);
    const auto before = file_tree(root);
    std::size_t files = 0;
    for (const auto& [name, text] : before) {
        const fs::path file = root / name;
        const std::string kind = file.filename().string();
        if (!kind.starts_with(".lumenfold"))
            continue;
        SCOPED_TRACE(name);
        ++files;
        EXPECT_TRUE(check_format(file, nullptr));
        EXPECT_EQ(normal_form(text), text) << "the example is in the normal form";
        if (kind == ".lumenfold-built")
            continue;
        const Json json = *read_json_file(file);
        const auto last = [&](const char* key) {
            return json.contains(key) ? json[key].size() : 0;
        };
        if (json.contains("facts")) {
            EXPECT_TRUE(add_fact(file, {"l", "v", "", ""}, nullptr));
            EXPECT_TRUE(remove_record(file, "facts", last("facts")));
        }
        if (json.contains("requires")) {
            EXPECT_TRUE(add_dependency(file, {"n", "u", "", true}, nullptr));
            EXPECT_TRUE(remove_record(file, "requires", last("requires")));
        }
        if (kind == ".lumenfold-site") {
            EXPECT_TRUE(add_policy(file, {"new", "n", "t", "f", false}, nullptr));
            EXPECT_TRUE(remove_policy(file, last("policies")));
            EXPECT_TRUE(move_home_section(file, 0, 2));
            EXPECT_TRUE(move_home_section(file, 2, -2));
            EXPECT_TRUE(add_project_entry(file, "./projects/new/.lumenfold-project"));
            EXPECT_TRUE(remove_projects(file, {root / "projects/new/.lumenfold-project"}));
        }
        if (kind == ".lumenfold" && json["build"].contains("topics")) {
            EXPECT_TRUE(add_topic(file, {"new", "l", "t", "", "f"}, nullptr));
            EXPECT_TRUE(remove_topic(file, json["build"]["topics"].size()));
        }
    }
    EXPECT_GT(files, 30u);
    EXPECT_EQ(file_tree(root), before);
}

} // namespace
} // namespace Lumenfold
