#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// The files whose change would change a site.
struct WatchList {
    std::vector<std::filesystem::path> files;
    std::vector<std::filesystem::path> sources; ///< source folders, for tags

    /// A sign of how they all are now: equal signs, nothing changed. Costs a look at each.
    std::string sign() const;
};

} // namespace Lumenfold::Builder
