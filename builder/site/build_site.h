#pragma once

#include "builder/report/reporter.h"
#include "builder/site/watch_list.h"

#include <filesystem>
#include <string>

namespace Lumenfold::Builder {

struct SiteBuildOptions {
    std::filesystem::path output; ///< beats the configuration's "output"; may be empty
    bool pending = false;         ///< builds pending versions of all projects first
    bool check_only = false;      ///< tells everything and writes nothing
    unsigned threads = 0;         ///< 0: as many as there are cores
    WatchList* watched = nullptr; ///< where given, gets the files that the site is made of
    std::filesystem::path* built_folder = nullptr; ///< where given, gets the output folder
};

/// Makes the website of a `.lumenfold-site` from the versions that are built. False if a fault kept
/// the site, or a version, from being made.
bool build_site(const std::filesystem::path& site_file, const SiteBuildOptions& options,
                Reporter& reporter);

} // namespace Lumenfold::Builder
