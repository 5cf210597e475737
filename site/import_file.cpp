#include "site/import_file.h"

#include "site/path_text.h"
#include "site/text_file.h"

#include <optional>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

/// The first name from `wanted` on under which nothing lies, or these very bytes do.
fs::path free_name(const fs::path& wanted, const std::string& bytes) {
    fs::path candidate = wanted;
    for (int n = 2; is_occupied(candidate) && read_text_file(candidate) != bytes; ++n) {
        candidate = wanted;
        candidate.replace_filename(wanted.stem());
        candidate += "-" + std::to_string(n);
        candidate += wanted.extension();
    }
    return candidate;
}

bool leads_out(const fs::path& path, const fs::path& site_folder) {
    return !lies_within(comparable_path(path), comparable_path(site_folder));
}

} // namespace

Result import_file(const fs::path& site_folder, const std::string& subfolder,
                   const fs::path& source, NameTaken name_taken, ImportedFile& imported) {
    const std::optional<std::string> bytes = read_text_file(source);
    if (!bytes)
        return Result::failed("Cannot read " + path_to_utf8(source));
    const fs::path folder = site_folder / path_from_utf8(subfolder);
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        return Result::failed("Could not create " + path_to_utf8(folder) + ": " + error.message());
    fs::path copy = folder / source.filename();
    if (name_taken == NameTaken::FreeName)
        copy = free_name(copy, *bytes);
    if (leads_out(copy, site_folder))
        return Result::failed(path_to_utf8(copy) + " leads out of the site's folder.");
    if (read_text_file(copy) != bytes)
        if (Result written = write_text_file(copy, *bytes); !written)
            return written;
    imported.file = copy;
    imported.reference = subfolder + "/" + path_to_utf8(copy.filename());
    return {};
}

} // namespace Lumenfold
