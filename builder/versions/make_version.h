#pragma once

#include "builder/report/message.h"
#include "builder/repository/source_tree.h"
#include "builder/versions/stored_version.h"

#include <optional>
#include <string>

namespace Lumenfold::Builder {

/// What pages of a version need from the project's configuration.
struct VersionContext {
    std::string project;     ///< as messages name it
    std::string source_name; ///< the source folder as messages name its files: "sources/gauge"
    std::string site_url;    ///< the site's own address: links to it become links within the site
    std::string repo_url;    ///< "repo.url"; empty: links to files that are no pages are told
    std::string repo_platform;
    std::string label;
    std::string tag; ///< empty for a work tree
    std::string commit;
    std::string date;
};

/// Makes all pages of one version from the source folder's tree: manifest, README, license, topics
/// and the pictures they show. Faults of content go to `messages` and the pages are made as far as
/// they can be; nothing, with a fault told, if there is no usable manifest.
std::optional<StoredVersion> make_version(const SourceTree& tree, const VersionContext& context,
                                          Messages& messages);

} // namespace Lumenfold::Builder
