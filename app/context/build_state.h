#pragma once

#include <string>

namespace Lumenfold {

/// The builds of the site; there is one for the whole application.
struct BuildState {
    bool running = false;    ///< a build of the site or of a project; one at a time
    bool has_output = false; ///< the log of the site build has text
    std::string output;      ///< the built site's folder as the builder reported it
};

/// One version of a project as the builder lists it.
struct VersionRowUi {
    std::string tag_mm;   ///< major and minor part; also the name of its output folder
    std::string version;  ///< the whole tag
    std::string released; ///< release date
    std::string status;   ///< the builder's word
    bool included = false;
};

} // namespace Lumenfold
