#pragma once

#include "builder/repository/git_handles.h"
#include "builder/repository/source_tree.h"

namespace Lumenfold::Builder {

/// A folder of a commit. Identities are the names of git's own objects.
class GitTree : public SourceTree {
public:
    /// `folder` is the tree at `prefix` of some commit in `repository`.
    GitTree(GitRepository repository, GitTreePointer folder, std::string prefix);

    EntryKind kind(std::string_view path) const override;
    std::optional<std::string> read(std::string_view path) const override;
    std::vector<std::string> names(std::string_view folder) const override;
    std::string identity(std::string_view path) const override;
    std::string prefix() const override { return prefix_; }

private:
    GitTreeEntry entry(std::string_view path) const;

    GitRepository repository_;
    GitTreePointer folder_;
    std::string prefix_;
};

/// What a tree's entry is.
EntryKind kind_of(const git_tree_entry& entry);

} // namespace Lumenfold::Builder
