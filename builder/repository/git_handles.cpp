#include "builder/repository/git_handles.h"

#include <array>

namespace Lumenfold::Builder {

namespace {

/// The library for the life of the process. Its check of a repository's owner stays on.
struct GitLibrary {
    GitLibrary() {
        git_libgit2_init();
        // Both change how a work tree is kept or filled, not what tags and objects mean.
        std::array<const char*, 2> extensions = {"worktreeconfig", "partialclone"};
        git_libgit2_opts(GIT_OPT_SET_EXTENSIONS, extensions.data(), extensions.size());
    }
    ~GitLibrary() { git_libgit2_shutdown(); }
};

} // namespace

void use_git() {
    static const GitLibrary library;
}

std::string git_failure() {
    const git_error* error = git_error_last();
    return error && error->message ? error->message : "no reason given";
}

std::string hex_of(const git_oid& oid) {
    std::array<char, GIT_OID_HEXSZ> digits;
    git_oid_fmt(digits.data(), &oid);
    return {digits.data(), digits.size()};
}

} // namespace Lumenfold::Builder
