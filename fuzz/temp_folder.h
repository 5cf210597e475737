#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

/// A folder of the fuzzer's process, for functions that read files.
inline const std::filesystem::path& temp_folder() {
    struct Folder {
        std::filesystem::path path;
        Folder() {
            std::string pattern =
                (std::filesystem::temp_directory_path() / "lumenfold-fuzz-XXXXXX").string();
            if (!::mkdtemp(pattern.data()))
                std::abort();
            path = pattern;
        }
        ~Folder() { std::filesystem::remove_all(path); }
    };
    static const Folder folder;
    return folder.path;
}

inline void put_file(const std::filesystem::path& path, std::string_view text) {
    std::ofstream(path, std::ios::binary)
        .write(text.data(), static_cast<std::streamsize>(text.size()));
}

/// Ends the run with a finding.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}
