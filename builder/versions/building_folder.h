#pragma once

#include "builder/files/folder_lock.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Lumenfold::Builder {

/// Where one version of a project is made before it is moved into place: the folder
/// ".lumenfold-building/<label>" beside "versions". While it is open no other process makes the
/// same version; others of the project may be made at the same time.
class BuildingFolder {
public:
    /// Opens it for the version that will stand in `place` ("…/versions/3.2"), and first finishes
    /// or takes back what a build that was killed left there. Nothing, with words for the user, if
    /// another build is making this version or the folder cannot be made.
    static std::optional<BuildingFolder> open(const std::filesystem::path& place,
                                              std::string& problem);
    /// Removes what is left in it, and itself.
    ~BuildingFolder();
    BuildingFolder(BuildingFolder&&) noexcept = default;
    BuildingFolder& operator=(BuildingFolder&&) noexcept = delete;

    /// An empty folder to make the version in.
    std::optional<std::filesystem::path> start(std::string& problem);
    /// Moves what was made into place, in the stead of what stood there.
    bool move_into_place(std::string& problem);

    const std::filesystem::path& place() const { return place_; }

private:
    BuildingFolder(std::filesystem::path place, FolderLock lock);
    void repair();

    std::filesystem::path place_;
    std::filesystem::path folder_;
    FolderLock lock_;
};

/// Finishes or takes back what builds that were killed left of a project's versions, but for those
/// that are being made now. Costs one look where there is nothing to do.
void repair_versions(const std::filesystem::path& project_folder);

} // namespace Lumenfold::Builder
