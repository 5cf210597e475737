#pragma once

#include "site/json_file.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace TestSupport {

namespace fs = std::filesystem;

/// What a rewrite that changes nothing makes of a JSON text.
inline std::string normal_form(const std::string& text) {
    const auto json = Lumenfold::parse_json(text);
    const auto normal = json ? Lumenfold::dump_config(*json) : std::nullopt;
    EXPECT_TRUE(normal) << "not a document: " << text.substr(0, 200);
    return normal.value_or("");
}

/// The words that the JSON library has for a faulty text.
inline std::string parser_words(const std::string& text) {
    try {
        return "no fault: " + nlohmann::ordered_json::parse(text).dump();
    } catch (const nlohmann::json::exception& problem) {
        return problem.what();
    }
}

/// Checks what `change` makes of a file that holds `before`: the normal form of `after`, or a
/// refusal that leaves every byte where `after` is null.
inline void expect_change(const std::string& before, const char* after,
                          const std::function<bool(const fs::path&)>& change) {
    SCOPED_TRACE(before);
    const TempDir dir;
    write_file(dir / "file", before);
    EXPECT_EQ(change(dir / "file"), after != nullptr);
    EXPECT_EQ(read_file(dir / "file"), after ? normal_form(after) : before);
}

/// While it lives, a write beyond `bytes` of a file fails as on a full disk: the file opens, is
/// truncated and takes that much. Nothing may be printed meanwhile, output being a file too.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
        : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit before_{};
    void (*handler_)(int);
};

/// A small file system of its own, mounted in the child process of `on_private_disk`.
class PrivateDisk {
public:
    explicit PrivateDisk(fs::path root)
        : root_(std::move(root)) {}

    const fs::path& path() const { return root_; }
    /// From now on no file opens for writing.
    void make_read_only() const {
        ASSERT_EQ(::mount("none", root_.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    }
    /// Leaves room for `count` files and folders to come.
    void leave_inodes(int count) const {
        const fs::path filler = root_ / "filler";
        fs::create_directory(filler);
        int made = 0;
        while (::mknod((filler / std::to_string(made)).c_str(), S_IFREG | 0600, 0) == 0)
            ++made;
        ASSERT_GE(made, count);
        for (int i = 0; i < count; ++i)
            fs::remove(filler / std::to_string(i));
    }

private:
    fs::path root_;
};

/// Runs `body` in a child process on a file system of `options` (see tmpfs(5)), and fails the test
/// if it fails there. False where mounting is not permitted.
inline bool on_private_disk(const char* options,
                            const std::function<void(const PrivateDisk&)>& body) {
    constexpr int NOT_PERMITTED = 77;
    const TempDir mount_point;
    const uid_t user = ::getuid();
    const gid_t group = ::getgid();
    std::fflush(nullptr); // or the child prints what is waiting a second time
    const pid_t child = ::fork();
    if (child == 0) {
        if (user == 0) {
            if (::unshare(CLONE_NEWNS) != 0)
                ::_exit(NOT_PERMITTED);
        } else {
            if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
                ::_exit(NOT_PERMITTED);
            write_file("/proc/self/setgroups", "deny");
            write_file("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
            write_file("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
        }
        if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("tmpfs", mount_point.path().c_str(), "tmpfs", 0, options) != 0)
            ::_exit(NOT_PERMITTED);
        body(PrivateDisk(mount_point.path()));
        std::fflush(nullptr);
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == NOT_PERMITTED)
        return false;
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "failed on the private disk";
    return true;
}

} // namespace TestSupport
