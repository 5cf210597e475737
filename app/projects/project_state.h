#pragma once

#include "app/builds/build_state.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Lumenfold {

/// What the panels of the project configurator share about the member shown. Set anew by
/// `fill_project_panels`, except where told otherwise.
struct ProjectState {
    bool umbrella = false;         ///< the member is a family's overview
    std::string log;               ///< the project build's output so far; outlives a switch
    std::size_t pending_count = 0; ///< versions that wait for a build; by `set_pending_count`
    std::string source_path;       ///< the text of "build.source_path"; follows its field
    std::vector<VersionRowUi> version_rows; ///< by `refresh_versions`
    /// Of the latest query; older answers are dropped. Rises with every query.
    std::uint32_t versions_generation = 0;

    std::size_t member_index = 0; ///< in the active configuration's members
    std::string latest_label;     ///< of the newest version built; empty if there is none
    std::string latest_date;      ///< its declared release date; may be empty
};

} // namespace Lumenfold
