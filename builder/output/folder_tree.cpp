#include "builder/output/folder_tree.h"

#include "site/path_text.h"

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

FolderTree::FolderTree(fs::path root, std::function<bool(std::string_view)> is_our_file)
    : root_(std::move(root))
    , is_our_file_(std::move(is_our_file)) {}

FolderKind FolderTree::way_to(std::string_view file, std::string& obstacle) {
    FolderKind last = FolderKind::Folder;
    for (std::size_t slash = file.find('/'); slash != std::string_view::npos;
         slash = file.find('/', slash + 1)) {
        obstacle = file.substr(0, slash);
        last = kind(obstacle);
        if (last == FolderKind::Blocked)
            break;
    }
    return last;
}

FolderKind FolderTree::kind(const std::string& folder) {
    const auto [known, is_new] = kinds_.try_emplace(folder, FolderKind::Missing);
    if (!is_new)
        return known->second;
    std::error_code error;
    const fs::file_type type = fs::symlink_status(root_ / path_from_utf8(folder), error).type();
    if (type == fs::file_type::directory)
        known->second = FolderKind::Folder;
    else if (type != fs::file_type::not_found)
        known->second = type == fs::file_type::regular && is_our_file_(folder)
                            ? FolderKind::Ours
                            : FolderKind::Blocked;
    return known->second;
}

std::vector<std::string> FolderTree::missing() const {
    std::vector<std::string> folders;
    for (const auto& [folder, kind] : kinds_) // "a" sorts before "a/b"
        if (kind == FolderKind::Missing || kind == FolderKind::Ours)
            folders.push_back(folder);
    return folders;
}

bool FolderTree::make(const std::string& folder, std::error_code& error) {
    const fs::path path = root_ / path_from_utf8(folder);
    FolderKind& kind = kinds_[folder];
    if (kind == FolderKind::Ours)
        fs::remove(path, error);
    if (!error)
        fs::create_directory(path, error);
    if (!error)
        kind = FolderKind::Folder;
    return !error;
}

} // namespace Lumenfold::Builder
