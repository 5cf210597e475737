#include "builder/repository/git_place.h"

#include "site/json_file.h"
#include "site/path_text.h"

#include <string_view>
#include <system_error>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

bool is_folder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

bool is_git_folder(const fs::path& folder) {
    return is_folder(folder / "objects") && is_folder(folder / "refs") &&
           is_occupied(folder / "HEAD");
}

/// The path in a file of one line, such as "gitdir: ../.git/worktrees/a", relative to the file's
/// own folder; empty if there is none.
fs::path path_in_file(const fs::path& file, std::string_view key) {
    const std::optional<std::string> text = read_text_file(file);
    if (!text || !text->starts_with(key))
        return {};
    std::string_view path = std::string_view(*text).substr(key.size());
    while (!path.empty() && (path.back() == '\n' || path.back() == '\r'))
        path.remove_suffix(1);
    return path.empty() ? fs::path() : file.parent_path() / path_from_utf8(path);
}

/// The folder that ".git" in a work tree is or, as a file, names.
fs::path git_folder_of(const fs::path& dot_git) {
    const fs::path named = path_in_file(dot_git, "gitdir: ");
    return named.empty() ? dot_git : named;
}

std::string prefix_below(const fs::path& root, const fs::path& folder) {
    const std::string prefix = path_to_utf8(folder.lexically_relative(root).generic_string());
    return prefix == "." ? std::string() : prefix + '/';
}

GitPlace make_place(const fs::path& root, const fs::path& git_folder, const fs::path& folder) {
    const fs::path shared = path_in_file(git_folder / "commondir", "");
    return {root, shared.empty() ? git_folder : shared, prefix_below(root, folder)};
}

} // namespace

std::optional<GitPlace> find_git_place(const fs::path& folder) {
    const fs::path start = comparable_path(folder);
    const bool exists = is_folder(start);
    for (fs::path at = start;; at = at.parent_path()) {
        if (exists && is_occupied(at / ".git"))
            return make_place(at, git_folder_of(at / ".git"), start);
        if (is_git_folder(at))
            return make_place(at, at, start);
        if (at == at.parent_path())
            return std::nullopt;
    }
}

} // namespace Lumenfold::Builder
