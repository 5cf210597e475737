#pragma once

#include <csignal>
#include <sys/resource.h>

namespace TestSupport {

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

} // namespace TestSupport
