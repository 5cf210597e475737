#include "builder/versions/building_folder.h"

#include "builder/files/file_io.h"
#include "site/config_files.h"
#include "site/path_text.h"

#include <vector>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

constexpr const char* BUILDING_FOLDER = ".lumenfold-building";
constexpr const char* NEW_FOLDER = "new"; ///< the version that is being made
constexpr const char* OLD_FOLDER = "old"; ///< the one it replaces, from move to removal

/// Another process may remove the folder, done with it, while we open it.
constexpr int OPENING_ATTEMPTS = 20;

std::string failure(const fs::path& place, const std::error_code& error) {
    return path_to_utf8(place) + " cannot be written: " + error.message() +
           ". What was there before is kept; mend this and build again.";
}

fs::path building_folder_of(const fs::path& project_folder) {
    return project_folder / BUILDING_FOLDER;
}

std::optional<FolderLock> make_and_lock(const fs::path& folder, std::error_code& error) {
    for (int attempt = 0; attempt < OPENING_ATTEMPTS; ++attempt) {
        fs::create_directories(folder, error);
        if (error && error != std::errc::no_such_file_or_directory)
            return std::nullopt;
        if (std::optional<FolderLock> lock = FolderLock::take(folder, error))
            return lock;
        if (error != std::errc::no_such_file_or_directory)
            return std::nullopt;
    }
    return std::nullopt;
}

} // namespace

BuildingFolder::BuildingFolder(fs::path place, FolderLock lock)
    : place_(std::move(place))
    , folder_(building_folder_of(place_.parent_path().parent_path()) / place_.filename())
    , lock_(std::move(lock)) {}

std::optional<BuildingFolder> BuildingFolder::open(const fs::path& place, std::string& problem) {
    const fs::path folder =
        building_folder_of(place.parent_path().parent_path()) / place.filename();
    std::error_code error;
    std::optional<FolderLock> lock = make_and_lock(folder, error);
    if (!lock) {
        problem = error == std::errc::device_or_resource_busy
                      ? "Another build is making " + path_to_utf8(place.filename()) +
                            " at this moment; wait until it is done."
                      : failure(place, error);
        return std::nullopt;
    }
    BuildingFolder building(place, std::move(*lock));
    building.repair();
    return building;
}

BuildingFolder::~BuildingFolder() {
    if (lock_.descriptor() < 0)
        return;
    std::error_code ignored;
    fs::remove_all(folder_ / NEW_FOLDER, ignored);
    fs::remove(folder_, ignored);
    fs::remove(folder_.parent_path(), ignored);
}

void BuildingFolder::repair() {
    const fs::path made = folder_ / NEW_FOLDER;
    const fs::path old = folder_ / OLD_FOLDER;
    std::error_code ignored;
    // Killed between the two moves: a version that is whole goes on, the old one goes back else.
    if (exists_at(old) && !exists_at(place_))
        fs::rename(exists_at(made / BUILT_FILE_NAME) ? made : old, place_, ignored);
    if (exists_at(place_))
        fs::remove_all(old, ignored);
    fs::remove_all(made, ignored);
}

std::optional<fs::path> BuildingFolder::start(std::string& problem) {
    const fs::path made = folder_ / NEW_FOLDER;
    std::error_code error;
    fs::remove_all(made, error);
    if (!error)
        fs::create_directory(made, error);
    if (!error)
        return made;
    problem = failure(place_, error);
    return std::nullopt;
}

bool BuildingFolder::move_into_place(std::string& problem) {
    const fs::path old = folder_ / OLD_FOLDER;
    std::error_code error;
    fs::create_directories(place_.parent_path(), error);
    const bool replaces = exists_at(place_);
    if (replaces && !fs::is_directory(fs::symlink_status(place_, error))) {
        problem = path_to_utf8(place_) + " is no folder; move it away and build again.";
        return false;
    }
    if (!error && replaces)
        fs::rename(place_, old, error);
    if (!error)
        fs::rename(folder_ / NEW_FOLDER, place_, error);
    std::error_code ignored;
    if (error) {
        problem = failure(place_, error);
        if (replaces && !exists_at(place_))
            fs::rename(old, place_, ignored);
        return false;
    }
    fs::remove_all(old, ignored);
    return true;
}

void repair_versions(const fs::path& project_folder) {
    const fs::path building = building_folder_of(project_folder);
    std::vector<fs::path> labels;
    std::error_code error;
    fs::directory_iterator entry(building, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error))
        labels.push_back(entry->path().filename());
    std::string ignored;
    for (const fs::path& label : labels)
        BuildingFolder::open(project_folder / "versions" / label, ignored);
}

} // namespace Lumenfold::Builder
