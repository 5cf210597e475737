#include "builder/repository/repository.h"

#include "builder/repository/git_place.h"
#include "builder/repository/git_tree.h"
#include "builder/repository/tag_names.h"
#include "builder/repository/tagged_versions.h"
#include "site/path_text.h"

#include <optional>
#include <string_view>
#include <utility>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

struct Repository::Handle {
    RepositoryState state = RepositoryState::NoRepository;
    std::string problem;
    GitRepository repository;
    std::string prefix;
    std::vector<std::string> tags;

    void refuse(std::string words) {
        state = RepositoryState::Refused;
        problem = std::move(words);
    }
    void open(const GitPlace& place);
};

namespace {

/// A word of a command line that a person may copy into a shell.
std::string shell_word(const std::string& text) {
    constexpr std::string_view PLAIN =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./+:@,";
    if (text.find_first_not_of(PLAIN) == std::string::npos)
        return text;
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + '\'';
}

/// Whether opening failed since another user owns the repository. Where no configuration trusts any
/// repository libgit2 ends with the failed search for that key.
bool is_mistrust(int code) {
    const git_error* error = git_error_last();
    return code == GIT_EOWNER ||
           (code == GIT_ENOTFOUND && error && error->klass == GIT_ERROR_CONFIG &&
            std::string_view(error->message).find("safe.directory") != std::string_view::npos);
}

std::string refusal(int code, const std::string& root) {
    if (is_mistrust(code))
        return "The repository " + root +
               " belongs to another user. If you trust it, run: git config --global --add "
               "safe.directory " +
               shell_word(root);
    return "The repository " + root + " cannot be read (" + git_failure() +
           "). See what git says: git -C " + shell_word(root) + " status";
}

/// The entry at `folder` ("sources/gauge/") of a commit's tree.
struct FolderLookup {
    EntryKind kind = EntryKind::Missing;
    GitTreePointer tree;
};

FolderLookup look_up_folder(GitTreePointer root, git_repository* repository,
                            const std::string& prefix) {
    if (prefix.empty())
        return {EntryKind::Folder, std::move(root)};
    git_tree_entry* raw_entry = nullptr;
    const std::string path = prefix.substr(0, prefix.size() - 1);
    if (git_tree_entry_bypath(&raw_entry, root.get(), path.c_str()) != 0)
        return {};
    const GitTreeEntry entry(raw_entry);
    FolderLookup found{kind_of(*entry), nullptr};
    git_tree* raw_tree = nullptr;
    if (found.kind == EntryKind::Folder &&
        git_tree_lookup(&raw_tree, repository, git_tree_entry_id(raw_entry)) == 0)
        found.tree.reset(raw_tree);
    return found;
}

std::string missing_folder(const std::string& prefix, EntryKind kind, const std::string& tag) {
    const std::string folder = prefix.substr(0, prefix.size() - 1);
    switch (kind) {
    case EntryKind::Missing:
        return "There is no folder " + folder + " in tag " + tag +
               ". Exclude the version, or move its tag.";
    case EntryKind::Link:
        return folder + " is a link in tag " + tag + ", which is never followed.";
    case EntryKind::Submodule:
        return folder + " is a submodule in tag " + tag + ", which is never followed.";
    default:
        return folder + " is no folder in tag " + tag + ". Exclude the version, or move its tag.";
    }
}

} // namespace

void Repository::Handle::open(const GitPlace& place) {
    const std::string root = path_to_utf8(place.root);
    git_repository* raw = nullptr;
    const int code =
        git_repository_open_ext(&raw, root.c_str(), GIT_REPOSITORY_OPEN_NO_SEARCH, nullptr);
    if (code != 0)
        return refuse(refusal(code, root));
    repository.reset(raw, git_repository_free);
    prefix = place.prefix;
    // A name that nobody has makes libgit2 read the packed ones, which may be broken.
    git_oid nobody;
    if (const int found = git_reference_name_to_id(&nobody, raw, "refs/lumenfold/none");
        found != 0 && found != GIT_ENOTFOUND)
        return refuse(refusal(found, root));
    std::optional<std::vector<std::string>> names = tag_names(place.shared_folder);
    if (!names)
        return refuse("The tags of the repository " + root + " cannot be read.");
    tags = std::move(*names);
    state = RepositoryState::Ready;
}

Repository::Repository(const fs::path& source_folder)
    : handle_(std::make_unique<Handle>()) {
    use_git();
    if (const std::optional<GitPlace> place = find_git_place(source_folder))
        handle_->open(*place);
}

Repository::~Repository() = default;
Repository::Repository(Repository&&) noexcept = default;
Repository& Repository::operator=(Repository&&) noexcept = default;

RepositoryState Repository::state() const {
    return handle_->state;
}

const std::string& Repository::problem() const {
    return handle_->problem;
}

bool Repository::is_shallow() const {
    return handle_->repository && git_repository_is_shallow(handle_->repository.get()) == 1;
}

std::vector<TaggedVersion> Repository::versions(std::vector<std::string>* oddities) const {
    std::vector<std::string> ignored;
    return tagged_versions(handle_->repository.get(), handle_->tags,
                           oddities ? *oddities : ignored);
}

std::unique_ptr<SourceTree> Repository::tree_at(const TaggedVersion& version,
                                                std::string& problem) const {
    git_repository* repository = handle_->repository.get();
    git_oid oid;
    git_commit* raw_commit = nullptr;
    git_tree* raw_tree = nullptr;
    if (!repository || git_oid_fromstr(&oid, version.commit.c_str()) != 0 ||
        git_commit_lookup(&raw_commit, repository, &oid) != 0 ||
        git_commit_tree(&raw_tree, GitCommit(raw_commit).get()) != 0) {
        problem = "The commit " + version.commit + " of tag " + version.tag +
                  " is missing here. Fetch it: git fetch --tags" +
                  (is_shallow() ? " --unshallow" : "");
        return nullptr;
    }
    FolderLookup folder = look_up_folder(GitTreePointer(raw_tree), repository, handle_->prefix);
    if (!folder.tree) {
        problem = missing_folder(handle_->prefix, folder.kind, version.tag);
        return nullptr;
    }
    return std::make_unique<GitTree>(handle_->repository, std::move(folder.tree), handle_->prefix);
}

} // namespace Lumenfold::Builder
