#include "builder/repository/tag_names.h"

#include "site/json_file.h"
#include "site/path_text.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <utility>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

/// Lines "<object> refs/tags/1.2.3", among those of branches and remarks.
bool add_packed(const fs::path& file, Names& names) {
    if (!is_occupied(file))
        return true;
    const std::optional<std::string> text = read_text_file(file);
    if (!text)
        return false;
    constexpr std::string_view MARK = " refs/tags/";
    for (std::size_t at = text->find(MARK); at != std::string::npos; at = text->find(MARK, at)) {
        at += MARK.size();
        const std::size_t end = std::min(text->find_first_of("\r\n", at), text->size());
        if (const auto name = std::string_view(*text).substr(at, end - at);
            name.find('/') == std::string_view::npos)
            names.emplace_back(name);
    }
    return true;
}

/// A file for each tag; folders hold tags with "/" in their names.
bool add_loose(const fs::path& folder, Names& names) {
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        std::string name = path_to_utf8(entry->path().filename());
        if (!name.ends_with(".lock") && !entry->is_directory(ignored))
            names.push_back(std::move(name));
    }
    return !error || error == std::errc::no_such_file_or_directory;
}

} // namespace

std::optional<Names> tag_names(const fs::path& shared_folder) {
    Names names;
    // Loose ones first: a tag that git packs in between is then found twice rather than never.
    if (!add_loose(shared_folder / "refs" / "tags", names) ||
        !add_packed(shared_folder / "packed-refs", names))
        return std::nullopt;
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

} // namespace Lumenfold::Builder
