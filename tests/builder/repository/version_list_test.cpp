#include "builder/repository/repository.h"
#include "builder/repository/repository_script.h"
#include "builder/repository/version_list.h"
#include "support/case_file.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <unistd.h>

namespace Lumenfold::Builder {
namespace {

using TestSupport::RepositoryScript;

std::string row_text(const VersionRow& row) {
    return row.name + '|' + row.tag + '|' + row.released + '|' + row.status + '|' +
           (row.included ? "1" : "0") + '\n';
}

std::string message_text(const Message& message) {
    static const char* const severities[] = {"info", "advanced", "complaint", "fault"};
    return std::string(severities[static_cast<int>(message.severity)]) + ": " + message.text + '\n';
}

/// The rows, then the messages, then the word "unversioned".
std::string listing(const RepositoryScript& script) {
    const VersionList list = list_versions(script.project_file());
    std::string text;
    for (const VersionRow& row : list.rows)
        text += row_text(row);
    for (const Message& message : list.messages)
        text += message_text(message);
    return script.without_folder(text + (list.unversioned ? "unversioned\n" : ""));
}

class VersionLists : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override { TestSupport::use_test_home(); }
};

TEST_P(VersionLists, AreMadeFromRepositories) {
    TestSupport::expect_cases(
        std::string("tests/builder/repository/cases/") + GetParam() + ".txt",
        [](const std::string& script) { return listing(RepositoryScript(script)); });
}

INSTANTIATE_TEST_SUITE_P(Builder, VersionLists, testing::Values("tags", "statuses", "repositories"),
                         [](const auto& name) { return std::string(name.param); });

/// Only the super-user can give a repository away.
TEST_F(VersionLists, RefuseTheRepositoryOfAnotherUserUntilItIsTrusted) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs another user's repository";
    RepositoryScript script("init; commit; tag 1.0.0; chown -R 12345 \"$DIR/source\"\n");
    EXPECT_EQ(listing(script),
              "fault: The repository DIR/source belongs to another user. If you trust it, run: "
              "git config --global --add safe.directory DIR/source\n");
    const auto config = TestSupport::use_test_home() / ".gitconfig";
    script.run("GIT_CONFIG_GLOBAL='" + config.string() +
               "' git config --global --add safe.directory \"$DIR/source\"\n");
    EXPECT_EQ(listing(script), "1.0|1.0.0|2024-05-05|new|0\n");
    std::filesystem::remove(config);
}

TEST_F(VersionLists, OfTenThousandTagsTakeNoTime) {
    for (const bool packed : {false, true}) {
        const RepositoryScript script("init; commit; git rev-parse HEAD >../commit\n");
        std::string commit = TestSupport::read_file(script.folder() / "commit");
        commit.pop_back();
        std::string lines;
        for (int i = 0; i < 10'000; ++i) {
            const std::string name =
                "refs/tags/1." + std::to_string(i % 20) + '.' + std::to_string(i);
            lines += commit + ' ' + name + '\n';
            if (!packed)
                TestSupport::write_file(script.source_folder() / ".git" / name, commit + '\n');
        }
        if (packed)
            TestSupport::write_file(script.source_folder() / ".git/packed-refs", lines);
        const auto start = std::chrono::steady_clock::now();
        const VersionList list = list_versions(script.project_file());
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
        ASSERT_EQ(list.rows.size(), 20U);
        EXPECT_EQ(list.rows.front().tag, "1.19.9999");
    }
}

/// A sign never stays the same over a change of tags, and stays the same over all else.
TEST_F(VersionLists, HaveASignThatChangesWithTheTags) {
    RepositoryScript script("init; commit; annotated 1.0.0 2024-01-01T00:00:00+0000; tag 1.1.0\n");
    const auto settled_sign = [&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        return tags_sign(script.source_folder());
    };
    std::string sign = settled_sign();
    for (const char* action : {"tag 2.0.0\n", "git tag -d 1.1.0\n", "commit; git tag -f 2.0.0\n",
                               "git pack-refs --all\n", "git tag -d 1.0.0\n", "tag 1.0.0\n"}) {
        script.run(action);
        EXPECT_NE(tags_sign(script.source_folder()), sign) << action;
        EXPECT_NE(settled_sign(), sign) << action;
        sign = settled_sign();
    }
    for (const char* action : {"commit a=b\n", "git branch other\n", "git gc -q\n", "put a=c\n"}) {
        script.run(action);
        if (std::string(action) != "git gc -q\n")
            EXPECT_EQ(settled_sign(), sign) << action;
        else
            sign = settled_sign();
    }
    script.run("git worktree add -q ../other; cd ../other\n");
    EXPECT_EQ(tags_sign(script.folder() / "other"), settled_sign());
    EXPECT_EQ(tags_sign(script.folder() / "project"), "");
}

} // namespace
} // namespace Lumenfold::Builder
