#pragma once

#include "site/result.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace Lumenfold {

/// What an import does about a file of its name with another content.
enum class NameTaken : std::uint8_t {
    Overwrite, ///< the new content takes its place
    FreeName   ///< the copy is called "name-2.ext", "name-3.ext", ...
};

struct ImportedFile {
    std::filesystem::path file;
    std::string reference; ///< below the site's folder, with "/" between its parts
};

/// Copies the bytes of `source` into the folder `subfolder` of a site, made if it is missing. A
/// file that holds the same bytes under the name is used as it is. The copy can be written whatever
/// the source's permissions are. Refuses a place that links lead out of the site.
Result import_file(const std::filesystem::path& site_folder, const std::string& subfolder,
                   const std::filesystem::path& source, NameTaken name_taken,
                   ImportedFile& imported);

} // namespace Lumenfold
