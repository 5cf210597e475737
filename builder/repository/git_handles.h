#pragma once

#include <git2.h>
#include <memory>
#include <string>

namespace Lumenfold::Builder {

/// Frees one of libgit2's objects by the function that belongs to it.
template <auto Free>
struct GitDeleter {
    template <typename T>
    void operator()(T* object) const {
        Free(object);
    }
};

using GitObject = std::unique_ptr<git_object, GitDeleter<git_object_free>>;
using GitCommit = std::unique_ptr<git_commit, GitDeleter<git_commit_free>>;
using GitTreePointer = std::unique_ptr<git_tree, GitDeleter<git_tree_free>>;
using GitTreeEntry = std::unique_ptr<git_tree_entry, GitDeleter<git_tree_entry_free>>;
using GitBlob = std::unique_ptr<git_blob, GitDeleter<git_blob_free>>;

/// A tree may outlive the `Repository` that gave it.
using GitRepository = std::shared_ptr<git_repository>;

/// Prepares libgit2 for this process. Called before anything else of it, as often as one likes.
void use_git();

/// What libgit2 says of its last failure on this thread.
std::string git_failure();

/// An object's name as 40 hexadecimal digits.
std::string hex_of(const git_oid& oid);

} // namespace Lumenfold::Builder
