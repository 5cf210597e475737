#include "site/path_text.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

fs::path path_from_utf8(std::string_view text) {
    return fs::path(std::u8string(text.begin(), text.end()));
}

std::string path_to_utf8(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

bool is_occupied(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

fs::path comparable_path(const fs::path& path) {
    std::error_code error;
    // An existing path, the usual case, costs one system call this way.
    fs::path result = fs::canonical(path, error);
    if (!error)
        return result;
    result = fs::weakly_canonical(path, error);
    if (!error && result.is_absolute())
        return result;
    // A folder on the way cannot be read, or not even the first one exists.
    const fs::path absolute = fs::absolute(path, error);
    return (error ? path : absolute).lexically_normal();
}

bool lies_within(const fs::path& path, const fs::path& folder) {
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first ==
           folder.end();
}

fs::path path_from_input(std::string_view text) {
    const char* home = std::getenv("HOME");
    if (!home || *home == '\0' || !(text == "~" || text.starts_with("~/")))
        return path_from_utf8(text);
    const std::size_t rest = std::min(text.find_first_not_of('/', 1), text.size());
    return fs::path(home) / path_from_utf8(text.substr(rest));
}

} // namespace Lumenfold
