#pragma once

#include "builder/files/folder_lock.h"
#include "builder/output/output_list.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Lumenfold::Builder {

// Names in the output folder that are the builder's own.
inline constexpr const char* LIST_FILE = ".lumenfold-output";
inline constexpr const char* NOTES_FOLDER = ".lumenfold-notes";
inline constexpr const char* NEW_FILES_FOLDER = ".lumenfold-new";

/// Makes the output folder if it is missing, locks it and reads its list. Nothing, with words for
/// the user, if the folder is none to write a site into.
std::optional<FolderLock> open_place(const std::filesystem::path& folder,
                                     const std::filesystem::path& site_folder, OutputList& list,
                                     std::string& problem);

} // namespace Lumenfold::Builder
