#pragma once

#include "builder/pages/search_index.h"
#include "builder/repository/source_tree.h"
#include "builder/site/project_note.h"
#include "builder/site/site_model.h"
#include "builder/versions/stored_version.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// A version of a project that is built and part of the site.
struct ShownVersion {
    std::string label;
    std::string date; ///< the declared one, else the built one's once it was read
    std::string license;
    std::string tag;
    std::filesystem::path folder;
};

/// What a project brings to the site in this build.
struct ProjectState {
    std::vector<ShownVersion> versions; ///< newest first
    ProjectNote note;
    bool noted = false;   ///< nothing changed: the note is the last build's
    bool renoted = false; ///< the note is not, or no longer, what the last build wrote
    /// The documents of the work tree, where no version is shown and they were read in this build.
    std::optional<StoredVersion> work_tree;
    bool unreleased = false; ///< has versions, and none that is built

    bool from_work_tree() const { return versions.empty(); }
};

/// The name of a project's unit in the output folder.
std::string unit_of(const SiteProject& project);

/// The source folder of a project; empty if it has none.
std::filesystem::path source_folder(const ProjectConfig& config);

/// Finds out what a project shows. `old_note` is the last build's and is taken over as far as it
/// still holds.
ProjectState project_state(const SiteModel& site, const SiteProject& project,
                           std::optional<ProjectNote> old_note);

/// Makes the versions that wait to be built without keeping them, for what there is to complain of.
void check_waiting_versions(const SiteModel& site, const SiteProject& project, ProjectNote& note);

/// The documents of a project's work tree; nothing if it has no source folder. What was looked at
/// goes to `note`, and so do messages.
std::optional<StoredVersion> read_work_tree(const SiteModel& site, const SiteProject& project,
                                            ProjectNote& note);

} // namespace Lumenfold::Builder
