#include "builder/files/folder_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace Lumenfold::Builder {

namespace {

/// Whether `path` still leads to the open folder: another process may have removed it, and made it
/// anew, between our opening and locking.
bool is_same_folder(int descriptor, const std::filesystem::path& path) {
    struct stat held = {};
    struct stat named = {};
    return ::fstat(descriptor, &held) == 0 && ::stat(path.c_str(), &named) == 0 &&
           held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

std::error_code last_error() {
    return errno == EWOULDBLOCK ? std::make_error_code(std::errc::device_or_resource_busy)
                                : std::error_code(errno, std::generic_category());
}

} // namespace

std::optional<FolderLock> FolderLock::take(const std::filesystem::path& folder,
                                           std::error_code& error) {
    FolderLock lock(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (lock.descriptor_ < 0 || ::flock(lock.descriptor_, LOCK_EX | LOCK_NB) != 0) {
        error = last_error();
        return std::nullopt;
    }
    if (!is_same_folder(lock.descriptor_, folder)) {
        error = std::make_error_code(std::errc::no_such_file_or_directory);
        return std::nullopt;
    }
    error.clear();
    return lock;
}

FolderLock::~FolderLock() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

FolderLock::FolderLock(FolderLock&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)) {}

FolderLock& FolderLock::operator=(FolderLock&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

} // namespace Lumenfold::Builder
