#include "builder/repository/repository.h"
#include "builder/repository/repository_script.h"
#include "builder/repository/source_tree.h"
#include "support/case_file.h"

#include <gtest/gtest.h>

#include <set>

namespace Lumenfold::Builder {
namespace {

using TestSupport::RepositoryScript;

/// Everything below a folder, a line each: "path: content" of files, else what the entry is.
std::string tree_text(const SourceTree& tree, const std::string& folder = {}) {
    std::string text;
    for (const std::string& name : tree.names(folder)) {
        const std::string path = folder.empty() ? name : folder + '/' + name;
        const EntryKind kind = tree.kind(path);
        EXPECT_EQ(tree.read(path).has_value(), kind == EntryKind::File) << path;
        static const char* const words[] = {"missing", "", "folder", "link", "submodule"};
        text += path + ": " + words[static_cast<int>(kind)] + tree.read(path).value_or("") + '\n';
        text += tree_text(tree, path);
    }
    return text;
}

/// The work tree, then each version's tree or why there is none.
std::string trees_of(const std::string& text) {
    const RepositoryScript script(text);
    // A script may say that its sources lie deeper.
    const std::string below = TestSupport::read_file(script.folder() / "below");
    const auto folder = script.source_folder() / below;
    std::string all = "work tree\n" + tree_text(*open_work_tree(folder));
    const Repository repository(folder);
    for (const TaggedVersion& version : repository.versions()) {
        std::string problem;
        const auto tree = repository.tree_at(version, problem);
        all += version.tag + (tree ? " " + tree->prefix() : std::string()) + '\n';
        all += tree ? tree_text(*tree) : problem + '\n';
    }
    return script.without_folder(all);
}

class SourceTrees : public testing::Test {
protected:
    void SetUp() override { TestSupport::use_test_home(); }
};

TEST_F(SourceTrees, ShowWhatATagHolds) {
    TestSupport::expect_cases("tests/builder/repository/cases/trees.txt", trees_of);
}

TEST_F(SourceTrees, LeadNowhereElse) {
    const RepositoryScript script("init; commit README.md=x guides/a.md=y; ln -s guides link\n"
                                  "git add -A; commit; tag 1.0.0; put ../secret=z\n");
    const Repository repository(script.source_folder());
    std::string problem;
    const auto tagged = repository.tree_at(repository.versions().front(), problem);
    const auto work = open_work_tree(script.source_folder());
    for (const SourceTree* tree : {tagged.get(), work.get()})
        for (const std::string path :
             {"../secret", "guides/../README.md", "./README.md", "guides//a.md", "README.md/x",
              "/etc/passwd", "link/a.md", ".git", ".git/HEAD", "guides/", "none"}) {
            EXPECT_EQ(tree->kind(path), EntryKind::Missing) << path;
            EXPECT_EQ(tree->read(path), std::nullopt) << path;
            EXPECT_EQ(tree->identity(path), "") << path;
            EXPECT_TRUE(tree->names(path).empty()) << path;
        }
    EXPECT_EQ(tagged->kind(std::string("README.md\0x", 11)), EntryKind::Missing);
    EXPECT_EQ(work->kind(std::string("README.md\0x", 11)), EntryKind::Missing);
}

/// Equal identities mean equal bytes, also of a file that is written twice within one tick.
TEST_F(SourceTrees, IdentifyBytes) {
    RepositoryScript script("init; commit a=x b=x; tag 1.0.0; commit a=y; tag 1.1.0\n");
    const Repository repository(script.source_folder());
    const std::vector<TaggedVersion> versions = repository.versions();
    std::string problem;
    const auto later = repository.tree_at(versions.at(0), problem);
    const auto earlier = repository.tree_at(versions.at(1), problem);
    EXPECT_NE(later->identity("a"), earlier->identity("a"));
    EXPECT_EQ(later->identity("b"), earlier->identity("a"));
    const auto work = open_work_tree(script.source_folder());
    std::set<std::string> identities;
    for (const char* text : {"1", "2", "3", "4"}) {
        TestSupport::write_file(script.source_folder() / "a", text);
        identities.insert(work->identity("a"));
    }
    EXPECT_EQ(identities.size(), 4U);
}

} // namespace
} // namespace Lumenfold::Builder
