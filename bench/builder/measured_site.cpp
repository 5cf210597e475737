#include "builder/measured_site.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <git2.h>
#include <map>
#include <random>
#include <stdexcept>
#include <string_view>
#include <thread>

namespace Bench {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t TOPIC_BYTES = 4096;

constexpr std::array<std::string_view, 24> WORDS = {
    "tide",  "water", "level",  "station", "gauge",  "reading", "harbour", "signal",
    "value", "every", "series", "of",      "and",    "with",    "from",    "which",
    "the",   "a",     "is",     "moon",    "filter", "hour",    "noise",   "between"};

/// Text of a kind that documentation is made of, the same for the same seed.
class Writer {
public:
    explicit Writer(unsigned seed)
        : random_(seed) {}

    std::string words(std::size_t count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i)
            text += std::string(i == 0 ? "" : " ") + std::string(WORDS[random_() % WORDS.size()]);
        return text;
    }

    std::string topic(int number, int topics) {
        std::string text = "# Topic " + std::to_string(number) + "\n\n" + words(30) + ".\n\n";
        while (text.size() < TOPIC_BYTES - 600)
            text += "## About " + words(3) + "\n\n" + words(60) + " `" + words(1) + "` " +
                    words(20) + " **" + words(2) + "**.\n\n- " + words(8) + "\n- " + words(9) +
                    "\n- " + words(7) + "\n\n";
        text += "| Name | Meaning |\n| --- | --- |\n| " + words(1) + " | " + words(6) + " |\n| " +
                words(1) + " | " + words(5) +
                " |\n\n```cpp\n// Reads the next value.\nint read(const Series& series) {\n"
                "    if (series.empty())\n        return 0;\n    return series.front() + 42;\n}\n"
                "```\n\nSee [the next topic](topic-" +
                std::to_string(number % topics + 1) + ".md) and " + words(30) + ".\n";
        return text;
    }

private:
    std::minstd_rand random_;
};

void write(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

std::string manifest(int topics) {
    std::string list;
    for (int i = 1; i <= topics; ++i) {
        const std::string n = std::to_string(i);
        list += std::string(i == 1 ? "" : ",") + "{\"slug\": \"topic-" + n +
                "\", \"label\": \"Topic " + n + "\", \"title\": \"Topic " + n +
                "\", \"intro\": \"What is said about " + n + "\", \"source\": \"topic-" + n +
                ".md\"}";
    }
    return R"({"format": 1, "build": {"readme": "README.md", "topics": [)" + list + "]}}\n";
}

void must(int code) {
    if (code != 0)
        throw std::runtime_error(git_error_last() ? git_error_last()->message : "git failed");
}

/// A repository that is written without starting git: a thousand of them would take minutes.
class History {
public:
    explicit History(const fs::path& folder) {
        must(git_repository_init(&repository_, folder.c_str(), 0));
        must(git_signature_new(&author_, "Ada", "ada@example.org", 1'700'000'000, 0));
    }
    ~History() {
        git_signature_free(author_);
        git_repository_free(repository_);
    }
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    /// Commits these files, and no others, and tags the commit.
    void commit(const std::string& tag, const std::map<std::string, std::string>& files) {
        git_treebuilder* builder = nullptr;
        must(git_treebuilder_new(&builder, repository_, nullptr));
        for (const auto& [name, bytes] : files) {
            git_oid blob;
            must(git_blob_create_from_buffer(&blob, repository_, bytes.data(), bytes.size()));
            must(git_treebuilder_insert(nullptr, builder, name.c_str(), &blob, GIT_FILEMODE_BLOB));
        }
        git_oid tree_id;
        must(git_treebuilder_write(&tree_id, builder));
        git_treebuilder_free(builder);
        git_tree* tree = nullptr;
        must(git_tree_lookup(&tree, repository_, &tree_id));
        commit(tag, tree);
        git_tree_free(tree);
    }

private:
    void commit(const std::string& tag, const git_tree* tree) {
        git_commit* parent = nullptr;
        if (has_commit_)
            must(git_commit_lookup(&parent, repository_, &commit_));
        const git_commit* parents[] = {parent};
        must(git_commit_create(&commit_, repository_, "HEAD", author_, author_, nullptr,
                               tag.c_str(), tree, has_commit_ ? 1 : 0, parents));
        git_commit_free(parent);
        has_commit_ = true;
        git_reference* reference = nullptr;
        must(git_reference_create(&reference, repository_, ("refs/tags/" + tag).c_str(), &commit_,
                                  0, nullptr));
        git_reference_free(reference);
    }

    git_repository* repository_ = nullptr;
    git_signature* author_ = nullptr;
    git_oid commit_ = {};
    bool has_commit_ = false;
};

std::string name_of(int project) {
    return "project-" + std::to_string(project);
}

fs::path source_of(const fs::path& folder, int project) {
    return folder / "site" / "sources" / name_of(project);
}

std::string page_head(const std::string& title, const std::string& description) {
    return "---\ntitle: \"" + title + "\"\ndescription: \"" + description + "\"\n---\n";
}

void make_project(const fs::path& folder, const SiteSize& size, int project) {
    const std::string name = name_of(project);
    const fs::path peer = folder / "hugo" / "content" / name;
    History history(source_of(folder, project));
    std::string declared;
    for (int version = size.versions; version >= 1; --version)
        declared += std::string(declared.empty() ? "" : ",") + "{\"label\": \"" +
                    std::to_string(version) + ".0\", \"release_date\": \"2026-01-01\"}";
    write(peer / "_index.md", page_head(name, ""));
    for (int version = 1; version <= size.versions; ++version) {
        const std::string label = std::to_string(version) + ".0";
        Writer writer(static_cast<unsigned>(project * 100 + version));
        const std::string readme = "# " + name + "\n\n" + writer.words(80) + ".\n";
        std::map<std::string, std::string> files = {{".lumenfold", manifest(size.topics)},
                                                    {"README.md", readme}};
        write(peer / label / "_index.md", page_head(label, "") + readme);
        for (int topic = 1; topic <= size.topics; ++topic) {
            const std::string file = "topic-" + std::to_string(topic) + ".md";
            const std::string text = writer.topic(topic, size.topics);
            files[file] = text;
            write(peer / label / file, page_head("Topic " + std::to_string(topic),
                                                 "What is said about " + std::to_string(topic)) +
                                           text);
        }
        history.commit(label + ".0", files);
    }
    write(folder / "site" / "projects" / name / ".lumenfold-project",
          "{\"format\": 1, \"slug\": \"" + name + "\", \"name\": \"" + name +
              "\", \"build\": {\"source_path\": \"../../sources/" + name + "\"}, \"versions\": [" +
              declared + "]}\n");
}

} // namespace

void make_measured_site(const fs::path& folder, const SiteSize& size) {
    std::string projects;
    for (int i = 1; i <= size.projects; ++i)
        projects += std::string(i == 1 ? "" : ",\n") + "{\"config\": \"./projects/" + name_of(i) +
                    "/.lumenfold-project\"}";
    write(folder / "site" / ".lumenfold-site",
          "{\"format\": 1, \"title\": \"Measured\", \"url\": \"https://docs.example.org\",\n"
          "\"projects\": [" +
              projects + "]}\n");
    fs::copy(SOURCE_ROOT "/bench/builder/hugo", folder / "hugo", fs::copy_options::recursive);
    git_libgit2_init();
    const auto make_half = [&](int first) {
        for (int i = first; i <= size.projects; i += 2)
            make_project(folder, size, i);
    };
    std::jthread other(make_half, 2);
    make_half(1);
}

void change_one_topic(const fs::path& folder, const SiteSize& size) {
    const int project = (size.projects + 1) / 2;
    const std::string label = std::to_string(size.versions) + ".0";
    const std::string command =
        "cd '" + source_of(folder, project).string() +
        "' && git reset -q --hard && echo 'One more sentence.' >>topic-1.md && git add -A && "
        "git -c user.name=Ada -c user.email=ada@example.org commit -q -m change && git tag " +
        label + ".$(git tag --list '" + label + ".*' | wc -l)";
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("failed: " + command);
}

} // namespace Bench
