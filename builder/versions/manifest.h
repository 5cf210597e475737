#pragma once

#include "builder/report/message.h"
#include "builder/repository/source_tree.h"

#include <optional>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// A topic that can have a page.
struct ManifestTopic {
    std::string slug; ///< valid, and no other topic's
    std::string label;
    std::string title;
    std::string intro;
    std::string source; ///< a file of the tree
};

/// The documents of a version; paths of files that the tree has, empty where there is none.
struct Manifest {
    std::string readme;
    std::string license;
    std::vector<ManifestTopic> topics;
};

/// Reads the manifest ".lumenfold" at the root of a source tree. A README or license that it does
/// not name is taken under its usual name. What it names and the tree has not, and topics that
/// cannot have a page, are told and left out. Nothing, with a fault told, without a usable
/// manifest. `source_name` is the source folder as messages name it.
std::optional<Manifest> read_manifest(const SourceTree& tree, const std::string& source_name,
                                      Messages& messages);

} // namespace Lumenfold::Builder
