#pragma once

#include "builder/report/message.h"
#include "builder/repository/version_list.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace Lumenfold::Builder {

/// Gets what there is to say as it comes.
using Tell = std::function<void(Message)>;

/// Builds pending versions of one project into "versions/<label>" beside its configuration: all, or
/// the one named. A version that is complete already is left alone, also if it is named. False if a
/// version could not be made, or somebody asked for the end before all were. Projects may be built
/// side by side.
bool build_versions(const std::filesystem::path& project_file, const std::string& only_label,
                    const Tell& tell);

/// The same for a caller who has the list already and told its messages.
bool build_versions(const std::filesystem::path& project_file, const VersionList& list,
                    const std::string& only_label, const Tell& tell);

/// The rows of a list that a build would make: the pending ones, and those that are complete by
/// their record but hold nothing that pages could be made of, as after another builder.
std::vector<VersionRow> rows_to_build(const std::filesystem::path& project_file,
                                      const VersionList& list);

} // namespace Lumenfold::Builder
