#include "layers/style_folder.h"

#include "layers/log.h"

#include <algorithm>
#include <string>
#include <system_error>

namespace Layers {
namespace {

namespace fs = std::filesystem;

// A leading underscore switches a file off, but not a folder.
bool is_style_file(const fs::path& path) {
    return path.extension() == ".lyr" && !path.filename().string().starts_with('_');
}

class FolderWalk {
public:
    void enter(const fs::path& folder) {
        std::error_code error;
        const fs::path place = fs::canonical(folder, error);
        std::vector<fs::directory_entry> entries;
        if (!error)
            entries = list(folder, error);
        if (error)
            tell(folder, error.message());
        if (std::find(open_.begin(), open_.end(), place) != open_.end())
            return tell(folder, "the link leads back to a folder around it");
        open_.push_back(place);
        for (const fs::directory_entry& entry : entries)
            visit(entry);
        open_.pop_back();
    }

    std::vector<fs::path> take() { return std::move(files_); }

private:
    // Sorted, so that what is told comes in the same order everywhere.
    std::vector<fs::directory_entry> list(const fs::path& folder, std::error_code& error) {
        std::vector<fs::directory_entry> entries;
        fs::directory_iterator entry(folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            if (seen_++ >= MAX_STYLE_ENTRIES) {
                if (seen_ == MAX_STYLE_ENTRIES + 1)
                    tell(entry->path(), "the style folder has too many entries");
                break;
            }
            entries.push_back(*entry);
        }
        std::sort(entries.begin(), entries.end());
        return entries;
    }

    void visit(const fs::directory_entry& entry) {
        std::error_code error;
        const fs::file_status status = entry.status(error);
        if (fs::is_directory(status))
            enter(entry.path());
        else if (fs::is_regular_file(status) && is_style_file(entry.path()))
            files_.push_back(entry.path());
        else if (error && is_style_file(entry.path()))
            tell(entry.path(), error.message());
    }

    static void tell(const fs::path& path, const std::string& reason) {
        log_line("engine: " + path.string() + ": Left out; " + reason + ".");
    }

    std::vector<fs::path> files_;
    std::vector<fs::path> open_; ///< the folders around the present one, without links
    std::size_t seen_ = 0;
};

} // namespace

std::vector<fs::path> style_files(const fs::path& folder) {
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        log_line("engine: " + folder.string() +
                 ": Failed to read files because no directory was found at the given path.");
        return {};
    }
    FolderWalk walk;
    walk.enter(folder);
    std::vector<fs::path> files = walk.take();
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace Layers
