#include "builder/versions/write_version.h"

#include "builder/files/content_hash.h"
#include "builder/files/file_io.h"
#include "builder/files/fit_path.h"
#include "builder/versions/build_record.h"
#include "builder/versions/version_contents.h"
#include "site/config_files.h"
#include "site/path_text.h"

#include <set>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

/// Puts files into a new folder and keeps the hash of all, until the first failure.
class FolderWriter {
public:
    explicit FolderWriter(fs::path folder)
        : folder_(std::move(folder)) {}

    void add(const std::string& name, std::string_view bytes) {
        write(name, bytes);
        hasher_.add(name);
        hasher_.add(bytes);
    }
    void write(const std::string& name, std::string_view bytes) {
        const fs::path path = folder_ / path_from_utf8(name);
        if (!error_ && made_folders_.insert(path.parent_path()).second)
            fs::create_directories(path.parent_path(), error_);
        if (!error_)
            write_new_file(path, bytes, error_);
    }
    std::string hash() const { return hex_of(hasher_.result()); }
    const std::error_code& error() const { return error_; }

private:
    fs::path folder_;
    std::set<fs::path> made_folders_;
    ContentHasher hasher_;
    std::error_code error_;
};

const VersionFile* unfit_file(const StoredVersion& version) {
    for (const VersionFile& file : version.files)
        if (!is_fit_path(file.path))
            return &file;
    return nullptr;
}

} // namespace

bool write_version(BuildingFolder& building, const StoredVersion& version, std::string& problem) {
    if (const VersionFile* file = unfit_file(version)) {
        problem = "The file name " + file->path + " is not fit for a site; rename it.";
        return false;
    }
    const std::optional<fs::path> folder = building.start(problem);
    if (!folder)
        return false;
    FolderWriter writer(*folder);
    for (const VersionFile& file : version.files)
        writer.add(file.path, file.bytes);
    writer.add(PAGES_FILE, pages_text(version));
    writer.add(SEARCH_FILE, search_text(version));
    writer.add(CONTENTS_FILE, contents_text(version));
    writer.write(BUILT_FILE_NAME, record_text(version, writer.hash()));
    if (!writer.error())
        return building.move_into_place(problem);
    problem = path_to_utf8(building.place()) + " cannot be written: " + writer.error().message() +
              ". What was there before is kept; mend this and build again.";
    return false;
}

bool write_version(const fs::path& folder, const StoredVersion& version, std::string& problem) {
    std::optional<BuildingFolder> building = BuildingFolder::open(folder, problem);
    return building && write_version(*building, version, problem);
}

} // namespace Lumenfold::Builder
