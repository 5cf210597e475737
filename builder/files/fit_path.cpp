#include "builder/files/fit_path.h"

#include <algorithm>

namespace Lumenfold::Builder {

namespace {

constexpr std::size_t LONGEST_NAME = 255;
constexpr std::size_t LONGEST_PATH = 3000; // leaves room for the folder before it

bool is_fit_name(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.size() <= LONGEST_NAME;
}

bool is_fit_byte(char c) {
    return static_cast<unsigned char>(c) >= 0x20 && c != 0x7f && c != '\\';
}

} // namespace

bool is_fit_path(std::string_view path) {
    if (path.size() > LONGEST_PATH || !std::all_of(path.begin(), path.end(), is_fit_byte))
        return false;
    for (;;) {
        const std::size_t slash = std::min(path.find('/'), path.size());
        if (!is_fit_name(path.substr(0, slash)))
            return false;
        if (slash == path.size())
            return true;
        path.remove_prefix(slash + 1);
    }
}

} // namespace Lumenfold::Builder
