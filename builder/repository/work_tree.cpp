#include "builder/repository/file_stamp.h"
#include "builder/repository/repository.h"
#include "site/json_file.h"
#include "site/path_text.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

EntryKind kind_on_disk(const fs::path& path) {
    std::error_code error;
    switch (fs::symlink_status(path, error).type()) {
    case fs::file_type::regular:
        return EntryKind::File;
    case fs::file_type::directory:
        // A repository within another is what a submodule is in a commit.
        return is_occupied(path / ".git") ? EntryKind::Submodule : EntryKind::Folder;
    case fs::file_type::symlink:
        return EntryKind::Link;
    default:
        return EntryKind::Missing;
    }
}

/// Whether a part of a path names something in a folder that others may see.
bool is_visible(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name != ".git" &&
           name.find('\0') == std::string_view::npos;
}

/// A folder as it is now. Git's own files in it are not to be seen.
class WorkTree : public SourceTree {
public:
    explicit WorkTree(fs::path root)
        : root_(std::move(root)) {}

    EntryKind kind(std::string_view path) const override {
        if (path.ends_with('/'))
            return EntryKind::Missing;
        fs::path at = root_;
        EntryKind found = EntryKind::Folder;
        while (!path.empty()) {
            const std::size_t slash = std::min(path.find('/'), path.size());
            const std::string_view name = path.substr(0, slash);
            if (found != EntryKind::Folder || !is_visible(name))
                return EntryKind::Missing;
            at /= path_from_utf8(name);
            found = kind_on_disk(at);
            path.remove_prefix(std::min(slash + 1, path.size()));
        }
        return found;
    }

    std::optional<std::string> read(std::string_view path) const override {
        return kind(path) == EntryKind::File ? read_text_file(root_ / path_from_utf8(path))
                                             : std::nullopt;
    }

    std::vector<std::string> names(std::string_view folder) const override {
        std::vector<std::string> names;
        if (kind(folder) != EntryKind::Folder)
            return names;
        std::error_code error;
        fs::directory_iterator entry(root_ / path_from_utf8(folder), error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error))
            if (std::string name = path_to_utf8(entry->path().filename()); is_visible(name))
                names.push_back(std::move(name));
        std::sort(names.begin(), names.end());
        return names;
    }

    std::string identity(std::string_view path) const override {
        return kind(path) == EntryKind::Missing ? std::string()
                                                : file_stamp(root_ / path_from_utf8(path));
    }

private:
    fs::path root_;
};

} // namespace

std::unique_ptr<SourceTree> open_work_tree(const fs::path& source_folder) {
    // The folder itself may be reached by a link: the configuration chose it.
    return std::make_unique<WorkTree>(comparable_path(source_folder));
}

} // namespace Lumenfold::Builder
