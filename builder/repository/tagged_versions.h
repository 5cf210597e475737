#pragma once

#include "builder/repository/git_handles.h"
#include "builder/repository/repository.h"

#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// The versions among `names` of tags. Objects are read only of tags that win their label, since a
/// repository may have ten thousand tags. Null for `repository` gives none.
std::vector<TaggedVersion> tagged_versions(git_repository* repository,
                                           const std::vector<std::string>& names,
                                           std::vector<std::string>& oddities);

} // namespace Lumenfold::Builder
