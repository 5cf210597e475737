#include "builder/files/file_io.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace Lumenfold::Builder {

namespace {

/// A descriptor that is closed at the end of its scope.
class Descriptor {
public:
    explicit Descriptor(int number)
        : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0)
            ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return number_; }
    /// Closes now: some file systems tell only then that the bytes found no room.
    bool close() { return ::close(std::exchange(number_, -1)) == 0; }

private:
    int number_;
};

std::error_code last_error() {
    return {errno, std::generic_category()};
}

FileStamp stamp_of(const struct stat& status) {
    constexpr std::int64_t NANOSECONDS = 1'000'000'000;
    return {static_cast<std::uint64_t>(status.st_size),
            status.st_mtim.tv_sec * NANOSECONDS + status.st_mtim.tv_nsec};
}

bool write_all(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

std::optional<FileStamp> file_stamp(int base, const char* path) {
    struct stat status = {};
    if (::fstatat(base, path, &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return stamp_of(status);
}

std::optional<std::string> read_file(const std::filesystem::path& path) {
    // Without O_NONBLOCK a pipe in the place of a file would hold us up.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (file.number() < 0 || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t got = ::read(file.number(), bytes.data() + filled, bytes.size() - filled);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        filled += static_cast<std::size_t>(got);
    }
    bytes.resize(filled);
    return bytes;
}

std::optional<FileStamp> write_new_file(const std::filesystem::path& path, std::string_view bytes,
                                        std::error_code& error) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (file.number() < 0) {
        error = last_error();
        return std::nullopt;
    }
    struct stat status = {};
    if (write_all(file.number(), bytes) && ::fstat(file.number(), &status) == 0 && file.close())
        return stamp_of(status);
    error = last_error();
    ::unlink(path.c_str());
    return std::nullopt;
}

bool exists_at(const std::filesystem::path& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0;
}

} // namespace Lumenfold::Builder
