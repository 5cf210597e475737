#include "builder/output/whole_files.h"

#include "builder/output/output_place.h"

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

WholeFiles::WholeFiles(const fs::path& output_folder)
    // One folder for all: file systems that spread files by folder are fastest so.
    : folder_(output_folder / NEW_FILES_FOLDER) {}

WholeFiles::~WholeFiles() {
    std::error_code ignored;
    if (exists_at(folder_))
        fs::remove_all(folder_, ignored);
}

bool WholeFiles::start(std::error_code& error) {
    fs::remove_all(folder_, error);
    if (!error)
        fs::create_directory(folder_, error);
    return !error;
}

std::optional<FileStamp> WholeFiles::write(const fs::path& place, std::string_view bytes,
                                           std::error_code& error) {
    const fs::path made = folder_ / std::to_string(next_++);
    std::optional<FileStamp> stamp = write_new_file(made, bytes, error);
    if (!stamp)
        return std::nullopt;
    fs::rename(made, place, error);
    if (!error)
        return stamp;
    std::error_code ignored;
    fs::remove(made, ignored);
    return std::nullopt;
}

} // namespace Lumenfold::Builder
