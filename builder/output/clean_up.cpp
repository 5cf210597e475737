#include "builder/output/clean_up.h"

#include "site/path_text.h"

#include <algorithm>
#include <set>
#include <unordered_set>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

std::string folder_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return path.substr(0, slash == std::string::npos ? 0 : slash);
}

std::set<std::string> needed_folders(const OutputList& list) {
    std::set<std::string> needed;
    for (const ListedUnit& unit : list.units)
        for (const ListedFile& file : unit.files) {
            std::string folder = folder_of(file.path);
            while (!folder.empty() && needed.insert(folder).second)
                folder = folder_of(folder);
        }
    return needed;
}

bool is_real_folder(const fs::path& path) {
    std::error_code ignored;
    return fs::is_directory(fs::symlink_status(path, ignored));
}

} // namespace

std::string remove_stale_files(const OpenFolder& folder, const OutputList& old,
                               const OutputList& now, FolderTree& tree, std::size_t& removed,
                               std::error_code& error) {
    std::unordered_set<std::string_view> ours;
    for (const ListedUnit& unit : now.units)
        for (const ListedFile& file : unit.files)
            ours.insert(file.path);
    std::string obstacle;
    for (const ListedUnit& unit : old.units)
        for (const ListedFile& file : unit.files) {
            if (ours.contains(file.path) ||
                tree.way_to(file.path, obstacle) != FolderKind::Folder ||
                !file_stamp(folder.descriptor, file.path.c_str()))
                continue;
            fs::remove(folder.path / path_from_utf8(file.path), error);
            if (error)
                return file.path;
            ++removed;
        }
    return {};
}

std::vector<std::string> remove_stale_folders(const OpenFolder& folder,
                                              const std::vector<std::string>& folders,
                                              const OutputList& now) {
    const std::set<std::string> needed = needed_folders(now);
    const std::set<std::string> ours(folders.begin(), folders.end());
    std::vector<std::string> stay;
    for (auto name = ours.rbegin(); name != ours.rend(); ++name) { // the inner before the outer
        const fs::path path = folder.path / path_from_utf8(*name);
        std::error_code not_empty;
        if (needed.contains(*name))
            stay.push_back(*name);
        else if (is_real_folder(path))
            fs::remove(path, not_empty);
    }
    std::reverse(stay.begin(), stay.end());
    return stay;
}

} // namespace Lumenfold::Builder
