// Plays cases/*.txt. A line is a step, an indented one continues the last; "#" opens a group and a
// blank line a new folder. Steps:
//
//     write NAME|TEXT   mkdir NAME   link NAME|TARGET   what the folder has
//     each STEP                                         so for each folder of the group
//     at NAME                                           the file that is asked and changed
//     limit BYTES       readonly                        how the next operation finds the disk
//     OPERATION ARGUMENT|... => done                    or the words of a refusal that leaves
//                                                       every byte
//     QUESTION ARGUMENT|... => ANSWER
//     json NAME => DOCUMENT                             as a write leaves it
//
// A limit is met twice: where room can be reserved, and where it turns out short in the midst of a
// write. No file may differ afterwards. What was shown of a record is its position and KEY=TEXT.
//
// DIR is the folder; an answer that ends in "…" is the start of the real one.
#include "site/config_files.h"
#include "site/failing_disk.h"
#include "site/import_file.h"
#include "site/new_project.h"
#include "site/new_site.h"
#include "site/path_text.h"
#include "site/project_groups.h"
#include "site/promotion.h"
#include "site/records.h"
#include "site/registry.h"
#include "site/site_support.h"
#include "site/slug.h"
#include "site/text_helpers.h"
#include "site/versions.h"

#include <fstream>
#include <functional>
#include <map>
#include <set>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::file_tree;
using TestSupport::FileSizeLimit;
using TestSupport::normal_form;
using TestSupport::read_file;
using TestSupport::ReadOnly;
using TestSupport::TempDir;
using TestSupport::write_file;

/// The arguments of a step; empty where there are none left.
struct Arguments {
    std::vector<std::string> texts;
    std::string operator[](std::size_t i) const { return i < texts.size() ? texts[i] : ""; }
    std::size_t index(std::size_t i) const {
        return static_cast<std::size_t>(std::stoll(texts[i]));
    }
    bool flag(std::size_t i) const { return (*this)[i] == "yes"; }
    /// From argument `i` on: the position, then KEY=TEXT for what was shown.
    ShownRecord shown(std::size_t i) const {
        ShownRecord record{index(i), {}};
        while (++i < texts.size()) {
            const std::size_t at = texts[i].find('=');
            record.texts.emplace_back(texts[i].substr(0, at), texts[i].substr(at + 1));
        }
        return record;
    }
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

bool create(F site, A a, E error) {
    fs::path created;
    const bool done = create_project(site, {a[0], a[1], a[2], a[3], a[4]}, &created, error);
    if (done) {
        EXPECT_EQ(read_project_info(created.string(), site.parent_path()).slug, a[1]);
    }
    return done;
}

bool promote(F site, A a, E error) {
    fs::path family;
    fs::path member;
    const fs::path project = site.parent_path() / a[0];
    const bool done = promote_to_family(site, project, a[1], a[2], &family, &member, error);
    EXPECT_EQ(family, done ? project : "");
    if (done) {
        EXPECT_EQ(fs::canonical(member), fs::canonical(project.parent_path()).string() + "-" +
                                             (a[1] / project.filename()).string());
    }
    return done;
}

/// Into "images" of the folder, with "over" over a file of its name; says nothing but errors.
bool import(F file, A a, E error) {
    const fs::path site = file.parent_path();
    ImportedFile imported;
    const Result result =
        import_file(site, "images", site / a[0],
                    a[1] == "over" ? NameTaken::Overwrite : NameTaken::FreeName, imported);
    if (result) {
        EXPECT_EQ(read_file(site / imported.reference), read_file(site / a[0]));
        EXPECT_EQ(site / imported.reference, imported.file);
    }
    return result.report_to(error);
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
        {"add_project_entry", [](F f, A a, E e) { return add_project_entry(f, a[0]).report_to(e); }},
        {"add_home_section", [](F f, A a, E e) { return add_home_section(f, Json::parse(a[0])).report_to(e); }},
        {"move_home_section", [](F f, A a, E e) { return move_home_section(f, a.shown(1), std::stoi(a[0])).report_to(e); }},
        {"remove_home_section", [](F f, A a, E e) { return remove_home_section(f, a.shown(0)).report_to(e); }},
        {"remove_record", [](F f, A a, E e) { return remove_record(f, a[0], a.shown(1)).report_to(e); }},
        {"remove_topic", [](F f, A a, E e) { return remove_topic(f, a.shown(0)).report_to(e); }},
        {"remove_policy", [](F f, A a, E e) { return remove_policy(f, a.shown(0)).report_to(e); }},
        {"remove_projects", [](F f, A a, E e) { return remove_projects(f, {f.parent_path() / a[0], f.parent_path() / "none"}).report_to(e); }},
        {"include_version", [](F f, A a, E e) { return include_version(f, a[0], a[1]).report_to(e); }},
        {"exclude_version", [](F f, A a, E e) { return exclude_version(f, a[0]).report_to(e); }},
        {"create_site", [](F f, A a, E e) { return create_site(f.parent_path() / a[0], a[1], e); }},
        {"create_project", create},
        {"promote", promote},
        {"import", import},
    };
    // clang-format on
    return all;
}

struct Folder {
    TempDir dir;
    fs::path file = dir / "file";
    fs::path written(const std::string& text) const {
        write_file(dir / "the folder/config", text);
        return dir / "the folder/config";
    }
};

std::string yes(bool is) {
    return is ? "yes" : "no";
}

std::string kind_of(const Folder& f, A a) {
    write_file(f.dir / a[0], a[1]);
    const char* kinds[] = {"site", "project", "manifest", "unknown"};
    return kinds[static_cast<int>(classify_config(f.dir / a[0]))];
}

std::string format_words(const Folder& f, A a) {
    std::string error;
    const bool passes = check_format(f.written(a[0]), &error);
    EXPECT_EQ(passes, error.empty());
    return error;
}

std::string section_types(const Folder& f, A a) {
    std::string types;
    for (const std::string& type : read_home_sections(f.written(a[0])))
        types += type + ",";
    return types;
}

std::string newer_of(const Folder&, A a) {
    EXPECT_FALSE(version_newer(a[0], a[1]) && version_newer(a[1], a[0]));
    return version_newer(a[0], a[1]) ? "first" : version_newer(a[1], a[0]) ? "second" : "neither";
}

std::string info_of(const Folder& f, A a) {
    const ProjectInfo info = read_project_info(a[0], f.dir.path());
    return info.slug + "|" + info.name + "|" + info.tagline + "|" + info.parent_slug + "|" +
           info.family_label + "|" + info.logo;
}

std::string built_record(const Folder& f, A) {
    BuiltRecord record;
    std::string error;
    return read_built_record(f.dir.path(), record, &error)
               ? record.tag + "|" + record.commit + "|" + record.built
               : error;
}

std::string manifest_words(const Folder& f, A) {
    Json json = "before";
    std::string error;
    const bool loads = load_manifest(f.file, json, &error);
    return loads ? json.dump() : json == "before" ? error : "changed";
}

std::string versions_of(const Folder& f, A) {
    const std::vector<VersionEntry> versions = discover_versions(f.dir.path());
    std::string listed;
    for (const VersionEntry& entry : versions)
        listed += entry.name + "=" + entry.tag + " ";
    return listed + "newest:" + newest_version(versions);
}

std::string rows_of(const Folder& f, A) {
    std::string text;
    for (const ProjectRow& row : collect_projects(*read_json_file(f.file), f.file.parent_path()))
        text += std::to_string(row.index) + (row.slug_is_text ? row.slug : "?") + "<" +
                row.parent_slug + ";";
    return text;
}

/// Each family between braces, its entries by folder; a broken one with its problem.
std::string groups_of(const Folder& f, A) {
    const fs::path root = f.file.parent_path();
    std::string text;
    for (const ProjectGroup& group :
         group_projects(registered_files(*read_json_file(f.file), root))) {
        text += "{";
        for (const RegisteredProject& entry : group.entries)
            text += entry.file.parent_path().filename().string() +
                    (&entry == group.lead() ? "*" : "") +
                    (entry.info.problem.empty() ? "" : "!" + entry.info.problem) + ",";
        text.back() = '}';
    }
    return text;
}

std::string orphans_of(const Folder& f, A) {
    const fs::path root = f.file.parent_path();
    std::string names;
    for (const std::string& name :
         find_orphans(root, registered_files(*read_json_file(f.file), root)))
        names += name + ";";
    return names;
}

/// Every name below the folder, links with "@".
std::string tree_of(const Folder& f, A a) {
    std::string names;
    for (const auto& [name, content] : file_tree(f.dir / a[0]))
        names += name + (fs::is_symlink(f.dir / a[0] / name) ? "@;" : ";");
    return names;
}

using Question = std::function<std::string(const Folder& folder, A arguments)>;

const std::map<std::string, Question>& questions() {
    // clang-format off
    static const std::map<std::string, Question> all = {
        {"classify", kind_of},
        {"format", format_words},
        {"sections", section_types},
        {"newer", newer_of},
        {"project_info", info_of},
        {"built", built_record},
        {"load_manifest", manifest_words},
        {"versions", versions_of},
        {"collect", rows_of},
        {"groups", groups_of},
        {"orphans", orphans_of},
        {"tree", tree_of},
        {"file", [](const Folder& f, A a) { return read_file(f.dir / a[0]); }},
        {"site_title", [](const Folder& f, A a) { return read_title(f.written(a[0]), ConfigKind::Site); }},
        {"project_name", [](const Folder& f, A a) { return read_title(f.written(a[0]), ConfigKind::Project); }},
        {"manifest", [](const Folder&, A a) { return manifest_path(a[0], a[1]).string(); }},
        {"slug", [](const Folder&, A a) { return yes(is_valid_slug(a[0])); }},
        {"slugify", [](const Folder&, A a) { return slugify(a[0]); }},
        {"reference", [](const Folder&, A a) { return resolve_reference(a[0], a[1]).string(); }},
        {"image", [](const Folder& f, A a) { return resolve_image(f.dir.path(), a[0]).string(); }},
        {"logo", [](const Folder& f, A a) { return resolve_project_logo(f.dir / "projects/p", a[0]).string(); }},
        {"site_above", [](const Folder& f, A a) { return find_site_above(f.dir / a[0]).string(); }},
        {"section_id", [](const Folder& f, A a) { return unique_section_id(f.file, a[0]); }},
        {"fragment", [](const Folder& f, A a) { return create_home_section_fragment(f.dir.path(), a[0]); }},
    };
    // clang-format on
    return all;
}

class Player {
public:
    void play(const std::string& line) {
        const std::size_t arrow = std::min(line.find(" =>"), line.size());
        const std::size_t blank = std::min(line.find(' '), arrow);
        const std::string verb = line.substr(0, blank);
        const std::string rest = blank < arrow ? line.substr(blank + 1, arrow - blank - 1) : "";
        if (line.empty()) {
            folder_.reset();
        } else if (line.starts_with("#")) {
            folder_.reset();
            each_.clear();
        } else if (verb == "each") {
            each_.push_back(rest);
        } else {
            if (!folder_) {
                folder_.emplace();
                for (const std::string& step : each_)
                    play(step);
            }
            const Arguments arguments = arguments_of(expanded(rest));
            if (arrow == line.size())
                prepare(verb, arguments);
            else
                answer(verb, arguments,
                       arrow + 4 < line.size() ? expanded(line.substr(arrow + 4)) : "");
        }
    }

    int answered = 0;

private:
    std::string expanded(std::string text) const {
        for (std::size_t at = 0; (at = text.find("DIR", at)) != std::string::npos;)
            text.replace(at, 3, folder_->dir.path().string());
        return text;
    }

    void prepare(const std::string& verb, A a) {
        const fs::path path = folder_->dir / a[0];
        if (verb == "write")
            write_file(path, a[1]);
        else if (verb == "mkdir")
            fs::create_directories(path);
        else if (verb == "link")
            fs::create_symlink(a[1], path);
        else if (verb == "at")
            folder_->file = path;
        else if (verb == "limit")
            limit_ = std::stoul(a[0]);
        else if (verb == "readonly")
            read_only_.emplace(folder_->dir.path());
        else
            ADD_FAILURE() << "no such step: " << verb;
    }

    void answer(const std::string& verb, A a, const std::string& expected) {
        ++answered;
        if (verb == "json")
            EXPECT_EQ(read_file(folder_->dir / a[0]), normal_form(expected));
        else if (const auto operation = operations().find(verb); operation != operations().end())
            expect(outcome(operation->second, a), expected);
        else
            expect(questions().at(verb)(*folder_, a), expected);
        read_only_.reset();
    }

    std::string outcome(const Operation& operation, A a) {
        const auto before = file_tree(folder_->dir.path());
        const auto limit = std::exchange(limit_, {});
        std::string error;
        if (limit)
            return limited_outcome(operation, a, *limit);
        if (operation(folder_->file, a, &error))
            return "done" + error;
        EXPECT_FALSE(operation(folder_->file, a, nullptr));
        EXPECT_EQ(file_tree(folder_->dir.path()), before);
        return error;
    }

    std::string limited_outcome(const Operation& operation, A a, rlim_t bytes) {
        std::string errors[2];
        for (const bool unreserved : {false, true}) {
            const auto before = files_in(folder_->dir.path());
            bool done = false;
            {
                const FileSizeLimit limit(bytes);
                const TestSupport::FailingDisk disk({.cannot_reserve = unreserved});
                done = operation(folder_->file, a, &errors[unreserved]);
            }
            EXPECT_FALSE(done);
            EXPECT_EQ(files_in(folder_->dir.path()), before) << "room reserved: " << !unreserved;
        }
        EXPECT_EQ(errors[0], errors[1]);
        return errors[0];
    }

    /// Without the folders: some operations leave the empty ones that they made.
    static std::map<std::string, std::string> files_in(const fs::path& root) {
        auto files = file_tree(root);
        std::erase_if(files, [](const auto& file) { return file.first.ends_with("/"); });
        return files;
    }

    static void expect(std::string actual, const std::string& expected) {
        const std::size_t more = std::min(expected.find("…"), expected.size());
        if (more < expected.size())
            actual.resize(std::min(more, actual.size()));
        EXPECT_EQ(actual, expected.substr(0, more));
    }

    std::optional<Folder> folder_;
    std::vector<std::string> each_;
    std::optional<rlim_t> limit_;
    std::optional<ReadOnly> read_only_;
};

class Cases : public testing::TestWithParam<const char*> {};

TEST_P(Cases, GoAsWritten) {
    std::ifstream in(std::string(SOURCE_ROOT "/tests/site/cases/") + GetParam() + ".txt");
    std::vector<std::pair<int, std::string>> steps;
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (line.starts_with(" "))
            steps.back().second += line;
        else
            steps.emplace_back(number, line);
    }
    Player player;
    for (const auto& [at, line] : steps) {
        SCOPED_TRACE("line " + std::to_string(at) + ": " + line);
        ASSERT_NO_THROW(player.play(line));
    }
    EXPECT_GT(player.answered, 15);
}

INSTANTIATE_TEST_SUITE_P(Site, Cases,
                         testing::Values("answers", "creation", "mutators", "promotion", "reading"),
                         [](const auto& name) { return std::string(name.param); });

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
        ASSERT_TRUE(remove_record(file, "facts", {size, {{"label", "new"}}}));
        EXPECT_EQ(read_file(file), normal_form(text));
        EXPECT_EQ(normal_form(normal_form(text)), normal_form(text));
    }
}

TEST(Trim, CutsBlanksAndTabsOnly) {
    EXPECT_EQ(trim(" \t a b\t "), "a b");
    EXPECT_EQ(trim("\n a \n"), "\n a \n");
}

} // namespace
} // namespace Lumenfold
