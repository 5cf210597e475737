#pragma once

#include "app/context/build_state.h"
#include "app/context/edit_state.h"
#include "app/context/set_state.h"
#include "site/json_file.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Lumenfold {

/// A Markdown file that the manifest names: the README or the license.
struct SourceDocument {
    std::string panel;        ///< node path of the panel
    std::string path_field;   ///< node path of the field that names the file
    std::string pointer;      ///< of the name in the manifest
    std::string default_name; ///< of a file made for an empty field
    FileEditor editor;
};

/// One row of the dependencies or of the downloads.
struct DepRow {
    std::string name;
    std::string url;
    bool external = false;
};

/// What the panels of the project configurator share about the member shown. Set anew by
/// `fill_project_panels`, except where told otherwise.
struct ProjectState {
    bool umbrella = false;             ///< the member is a family's overview
    bool build_has_output = false;     ///< the log of the build has text; outlives a switch
    std::size_t pending_count = 0;     ///< versions that wait for a build; by `set_pending_count`
    bool looking_for_versions = false; ///< no answer of the builder is known yet
    std::string source_path;           ///< the text of "build.source_path"; follows its field
    std::shared_ptr<const Json> manifest_build; ///< "build" of the manifest
    std::shared_ptr<const Json> edited_build;   ///< the same with the edits that wait for it
    std::string manifest_problem; ///< why a manifest that is there is of no use; may be empty
    std::vector<VersionRowUi> version_rows; ///< by `refresh_versions`
    std::string versions_path; ///< the configuration that they, and the pending count, belong to
    /// Of the latest query; older answers are dropped. Rises with every query.
    std::uint32_t versions_generation = 0;

    std::string latest_label; ///< of the newest version built; empty if there is none
    std::string latest_date;  ///< its declared release date; may be empty
    std::vector<DepRow> dependencies;
    std::vector<DepRow> downloads;

    SourceDocument readme;
    SourceDocument license;
    SetState topics;
};

} // namespace Lumenfold
