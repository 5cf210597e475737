#include "site/text_file.h"

#include "site/path_text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#if __has_include(<fcntl.h>) && __has_include(<unistd.h>)
#include <fcntl.h>
#include <unistd.h>
#endif

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Opened without a buffer of the library's, so that each failure is told by the call that met it.
File open_file(const fs::path& path, const char* mode) {
#ifdef _WIN32
    File file(::_wfopen(path.c_str(), fs::path(mode).c_str()));
#else
    File file(std::fopen(path.c_str(), mode));
#endif
    if (file)
        std::setvbuf(file.get(), nullptr, _IONBF, 0);
    return file;
}

bool is_regular(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

bool read_all(std::FILE* file, std::string& text) {
    std::array<char, 65536> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file))
        text.append(block.data(), count);
    return std::ferror(file) == 0;
}

std::error_code last_error() {
    return {errno != 0 ? errno : EIO, std::generic_category()};
}

/// Makes sure that a file of `size` bytes fits where it stands. File systems that cannot promise it
/// find out while writing.
std::error_code reserve(std::FILE* file, std::size_t size) {
#if defined(_POSIX_ADVISORY_INFO) && _POSIX_ADVISORY_INFO > 0
    if (size == 0)
        return {};
    const int problem = ::posix_fallocate(::fileno(file), 0, static_cast<off_t>(size));
    if (problem != 0 && problem != EOPNOTSUPP && problem != EINVAL)
        return {problem, std::generic_category()};
#else
    (void)file;
    (void)size;
#endif
    return {};
}

/// Makes `text` all that the file holds.
std::error_code overwrite(File file, const fs::path& path, std::string_view text) {
    errno = 0;
    if (std::fseek(file.get(), 0, SEEK_SET) != 0)
        return last_error();
    if (!text.empty() && std::fwrite(text.data(), 1, text.size(), file.get()) != text.size())
        return last_error();
    // Some file systems tell only here that the room was not there.
    if (std::fclose(file.release()) != 0)
        return last_error();
    std::error_code problem;
    fs::resize_file(path, text.size(), problem);
    return problem;
}

std::error_code reserve_and_overwrite(File file, const fs::path& path, std::string_view text) {
    if (const std::error_code problem = reserve(file.get(), text.size()))
        return problem;
    return overwrite(std::move(file), path, text);
}

/// Puts the old bytes back, as far as the disk lets it: they were all there a moment ago.
void put_back(const fs::path& path, const std::string& before) {
    std::error_code ignored;
    if (fs::file_size(path, ignored) > before.size())
        fs::resize_file(path, before.size(), ignored);
    if (File file = open_file(path, "r+b"))
        (void)overwrite(std::move(file), path, before);
}

std::error_code replace_text(const fs::path& path, std::string_view text) {
    File file = open_file(path, "r+b");
    if (!file)
        return last_error();
    std::string before;
    if (!read_all(file.get(), before))
        return last_error();
    const std::error_code problem = reserve_and_overwrite(std::move(file), path, text);
    if (problem)
        put_back(path, before);
    return problem;
}

std::error_code make_file(const fs::path& path, std::string_view text) {
    File file = open_file(path, "wbx");
    if (!file && errno == EEXIST) // a link to a file that is not there
        file = open_file(path, "wb");
    if (!file)
        return last_error();
    const std::error_code problem = reserve_and_overwrite(std::move(file), path, text);
    if (problem) {
        std::error_code ignored;
        fs::remove(comparable_path(path), ignored);
    }
    return problem;
}

std::error_code write_file(const fs::path& path, std::string_view text) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::status_known(status))
        return error;
    if (status.type() == fs::file_type::not_found)
        return make_file(path, text);
    if (status.type() == fs::file_type::directory)
        return std::make_error_code(std::errc::is_a_directory);
    if (status.type() != fs::file_type::regular)
        return std::make_error_code(std::errc::invalid_argument);
    return replace_text(path, text);
}

bool is_home_sign(const fs::path& part) {
    return part == "~";
}

} // namespace

std::optional<std::string> read_text_file(const fs::path& path) {
    // Folders open on some systems, and a pipe would block.
    if (!is_regular(path))
        return std::nullopt;
    const File file = open_file(path, "rb");
    std::string text;
    if (!file || !read_all(file.get(), text))
        return std::nullopt;
    return text;
}

Result write_text_file(const fs::path& path, std::string_view text) {
    if (const std::error_code problem = write_file(path, text))
        return Result::failed(path_to_utf8(path) + ": " + problem.message());
    return {};
}

Result write_text_file_in_folders(const fs::path& path, std::string_view text) {
    const fs::path folder = path.parent_path();
    std::error_code error;
    if (!folder.empty() && !fs::exists(folder, error)) {
        if (std::any_of(folder.begin(), folder.end(), is_home_sign))
            return Result::failed(path_to_utf8(path) +
                                  ": \"~\" stands for no folder here; write the whole path.");
        fs::create_directories(folder, error);
    }
    return write_text_file(path, text);
}

} // namespace Lumenfold
