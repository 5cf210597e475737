#pragma once

#include <cstdlib>
#include <filesystem>
#include <sys/prctl.h>
#include <unistd.h>

namespace TestSupport {

/// Makes everything below a folder read-only for its lifetime. The super-user may write all the
/// same, so a test of that user goes on as another one.
class ReadOnly {
public:
    explicit ReadOnly(std::filesystem::path root)
        : root_(std::move(root)) {
        set_permissions(std::filesystem::perms(0555), std::filesystem::perms(0444));
        dropped_ = ::geteuid() == 0 && ::seteuid(65534) == 0;
    }
    ~ReadOnly() {
        if (dropped_ && ::seteuid(0) != 0)
            std::abort();
        ::prctl(PR_SET_DUMPABLE, 1); // which a change of user takes away, and leak checkers need
        set_permissions(std::filesystem::perms(0755), std::filesystem::perms(0644));
    }
    ReadOnly(const ReadOnly&) = delete;
    ReadOnly& operator=(const ReadOnly&) = delete;

private:
    void set_permissions(std::filesystem::perms folders, std::filesystem::perms files) const {
        std::error_code ignored;
        std::filesystem::permissions(root_, folders, ignored);
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root_, ignored))
            if (!entry.is_symlink(ignored))
                std::filesystem::permissions(
                    entry.path(), entry.is_directory(ignored) ? folders : files, ignored);
    }

    std::filesystem::path root_;
    bool dropped_ = false;
};

} // namespace TestSupport
