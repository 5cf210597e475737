#pragma once

#include "builder/repository/source_tree.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// A tag that names a version: "X.Y.Z" or "vX.Y.Z", light or annotated.
struct TaggedVersion {
    std::string label;  ///< "X.Y"
    std::string tag;    ///< the tag's whole name
    std::string commit; ///< the commit that it means, 40 hexadecimal digits
    std::string date;   ///< "YYYY-MM-DD" in the tagger's, else the committer's own time zone
};

/// Why a source folder gives no versions.
enum class RepositoryState : std::uint8_t {
    Ready,
    NoRepository, ///< the folder lies in none: its documents are shown without versions
    Refused       ///< there is one that cannot be read; `problem` says why and what to do
};

/// The git repository that a project's source folder lies in, at its root or below. Everything is
/// read from tags' trees; the work tree is never looked at.
class Repository {
public:
    /// Opens the repository that holds `source_folder` and reads the names of its tags.
    explicit Repository(const std::filesystem::path& source_folder);
    ~Repository();
    Repository(Repository&&) noexcept;
    Repository& operator=(Repository&&) noexcept;

    RepositoryState state() const;
    /// Words for the user when the state is `Refused`.
    const std::string& problem() const;
    /// Whether this is a clone that was cut off, as build machines make them: its tags may have
    /// been left behind.
    bool is_shallow() const;

    /// The versions that tags name, newest first; of one label the highest patch, and of one
    /// version's two names the one without "v". Tags that look like a version and are none are told
    /// in `oddities` as sentences.
    std::vector<TaggedVersion> versions(std::vector<std::string>* oddities = nullptr) const;

    /// The source folder at a tag's commit; nothing, with words in `problem`, if the commit or the
    /// folder is missing there (a shallow clone, a folder that came later). It may outlive the
    /// repository.
    std::unique_ptr<SourceTree> tree_at(const TaggedVersion& version, std::string& problem) const;

private:
    struct Handle;
    std::unique_ptr<Handle> handle_;
};

/// A cheap sign of what tags a repository has: equal signs mean equal answers of `versions`. Made
/// from times and sizes of the files that git changes with each tag, so that asking a thousand
/// repositories costs a thousand looks at folders and nothing is opened. Empty without a
/// repository.
std::string tags_sign(const std::filesystem::path& source_folder);

/// The work tree of a source folder, for sources without repository or tags.
std::unique_ptr<SourceTree> open_work_tree(const std::filesystem::path& source_folder);

} // namespace Lumenfold::Builder
