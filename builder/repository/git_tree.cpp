#include "builder/repository/git_tree.h"

#include <algorithm>
#include <utility>

namespace Lumenfold::Builder {

EntryKind kind_of(const git_tree_entry& entry) {
    switch (git_tree_entry_filemode(&entry)) {
    case GIT_FILEMODE_TREE:
        return EntryKind::Folder;
    case GIT_FILEMODE_BLOB:
    case GIT_FILEMODE_BLOB_EXECUTABLE:
        return EntryKind::File;
    case GIT_FILEMODE_LINK:
        return EntryKind::Link;
    case GIT_FILEMODE_COMMIT:
        return EntryKind::Submodule;
    default:
        return EntryKind::Missing;
    }
}

GitTree::GitTree(GitRepository repository, GitTreePointer folder, std::string prefix)
    : repository_(std::move(repository))
    , folder_(std::move(folder))
    , prefix_(std::move(prefix)) {}

GitTreeEntry GitTree::entry(std::string_view path) const {
    git_tree_entry* found = nullptr;
    if (path.ends_with('/') || path.find('\0') != std::string_view::npos)
        return {};
    // On the way to the entry there are trees only: links and submodules are none.
    git_tree_entry_bypath(&found, folder_.get(), std::string(path).c_str());
    return GitTreeEntry(found);
}

EntryKind GitTree::kind(std::string_view path) const {
    if (path.empty())
        return EntryKind::Folder;
    const GitTreeEntry found = entry(path);
    return found ? kind_of(*found) : EntryKind::Missing;
}

std::optional<std::string> GitTree::read(std::string_view path) const {
    const GitTreeEntry found = entry(path);
    if (!found || kind_of(*found) != EntryKind::File)
        return std::nullopt;
    git_blob* raw = nullptr;
    if (git_blob_lookup(&raw, repository_.get(), git_tree_entry_id(found.get())) != 0)
        return std::nullopt;
    const GitBlob blob(raw);
    return std::string(static_cast<const char*>(git_blob_rawcontent(raw)),
                       static_cast<std::size_t>(git_blob_rawsize(raw)));
}

std::vector<std::string> GitTree::names(std::string_view folder) const {
    GitTreePointer below;
    if (!folder.empty()) {
        const GitTreeEntry found = entry(folder);
        git_tree* raw = nullptr;
        if (!found || git_tree_lookup(&raw, repository_.get(), git_tree_entry_id(found.get())) != 0)
            return {};
        below.reset(raw);
    }
    const git_tree* tree = below ? below.get() : folder_.get();
    std::vector<std::string> names;
    for (std::size_t i = 0; i < git_tree_entrycount(tree); ++i)
        names.emplace_back(git_tree_entry_name(git_tree_entry_byindex(tree, i)));
    // Git sorts folders as if their names ended in "/".
    std::sort(names.begin(), names.end());
    return names;
}

std::string GitTree::identity(std::string_view path) const {
    if (path.empty())
        return hex_of(*git_tree_id(folder_.get()));
    const GitTreeEntry found = entry(path);
    return found ? hex_of(*git_tree_entry_id(found.get())) : std::string();
}

} // namespace Lumenfold::Builder
