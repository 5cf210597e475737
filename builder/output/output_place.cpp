#include "builder/output/output_place.h"

#include "site/path_text.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

bool holds(const fs::path& folder, const fs::path& inner) {
    const fs::path outer = comparable_path(folder);
    const fs::path path = comparable_path(inner);
    return std::mismatch(outer.begin(), outer.end(), path.begin(), path.end()).first == outer.end();
}

bool is_own_name(const fs::path& name) {
    return name == NOTES_FOLDER || name == NEW_FILES_FOLDER;
}

/// Whether a folder without a list has anything in it that a build without luck did not leave.
bool holds_foreign_files(const fs::path& folder) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        if (!is_own_name(entry->path().filename()))
            return true;
    return false;
}

ListState read_list(const fs::path& folder, OutputList& list) {
    const fs::path file = folder / LIST_FILE;
    const std::optional<std::string> text = read_file(file);
    if (text)
        return parse_list(*text, list);
    return exists_at(file) ? ListState::Damaged : ListState::Missing;
}

std::string list_problem(const fs::path& folder, ListState state) {
    const std::string name = path_to_utf8(folder);
    if (state == ListState::Later)
        return "The site in " + name +
               " was built by a later Lumenfold. Update Lumenfold, or "
               "choose another output folder.";
    if (state == ListState::Damaged)
        return "The list of built files in " + name + " (" + LIST_FILE + ") is damaged, so that " +
               "the build's files and others cannot be told apart. Empty the folder and build "
               "again.";
    if (state == ListState::Missing && holds_foreign_files(folder))
        return "The folder " + name +
               " holds files that no build made. Choose an empty folder, "
               "or empty it.";
    return {};
}

std::string lock_problem(const fs::path& folder, const std::error_code& error) {
    if (error == std::errc::device_or_resource_busy)
        return "Another build is writing to " + path_to_utf8(folder) + ". Wait until it is done.";
    return "The output folder " + path_to_utf8(folder) + " cannot be opened: " + error.message() +
           ".";
}

} // namespace

std::optional<FolderLock> open_place(const fs::path& wanted, const fs::path& site_folder,
                                     OutputList& list, std::string& problem) {
    const fs::path folder = wanted.has_filename() ? wanted : wanted.parent_path();
    if (holds(folder, site_folder)) {
        problem = "The output folder " + path_to_utf8(folder) +
                  " holds the site's own files. Choose a folder of its own.";
        return std::nullopt;
    }
    std::error_code error;
    fs::create_directories(folder, error);
    std::optional<FolderLock> lock = error ? std::nullopt : FolderLock::take(folder, error);
    if (!lock) {
        problem = lock_problem(folder, error);
        return std::nullopt;
    }
    problem = list_problem(folder, read_list(folder, list));
    if (problem.empty() &&
        ::faccessat(AT_FDCWD, folder.c_str(), R_OK | W_OK | X_OK, AT_EACCESS) != 0)
        problem = "The output folder " + path_to_utf8(folder) +
                  " cannot be written. Change its permissions, or choose another.";
    return problem.empty() ? std::move(lock) : std::nullopt;
}

} // namespace Lumenfold::Builder
