#pragma once

#include "site/json_file.h"
#include "support/read_only.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <filesystem>
#include <string>
#include <sys/resource.h>

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
