#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>

namespace TestSupport {

/// A folder of its own for one test, removed with everything in it at the end.
class TempDir {
public:
    TempDir() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "lumenfold-test-XXXXXX").string();
        if (!::mkdtemp(pattern.data()))
            throw std::runtime_error("cannot make a temporary folder");
        path_ = std::filesystem::canonical(pattern);
    }
    ~TempDir() {
        std::error_code ignored;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path_, ignored))
            if (entry.is_directory(ignored) && !entry.is_symlink(ignored))
                std::filesystem::permissions(entry.path(), std::filesystem::perms::owner_all,
                                             ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

inline std::string read_file(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Writes a file, making its folders.
inline void write_file(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

/// Every file below `root` by relative path with its content; folders end in "/" and are empty.
inline std::map<std::string, std::string> file_tree(const std::filesystem::path& root) {
    std::map<std::string, std::string> tree;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        const std::string name = entry.path().lexically_relative(root).generic_string();
        if (entry.is_directory())
            tree[name + "/"] = {};
        else
            tree[name] = read_file(entry.path());
    }
    return tree;
}

} // namespace TestSupport
