#pragma once

#include "site/json_file.h"

#include <set>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// An element of a project's "versions".
struct DeclaredVersion {
    std::string label;
    std::string release_date; ///< may be empty
};

/// The declared versions of a project in their order, each label once. Elements that are none are
/// passed over.
std::vector<DeclaredVersion> declared_versions(const Json& project);

/// The labels in a project's "versions_excluded".
std::set<std::string> excluded_labels(const Json& project);

} // namespace Lumenfold::Builder
