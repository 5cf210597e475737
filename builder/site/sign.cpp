#include "builder/site/sign.h"

#include "builder/files/file_io.h"

#include <fcntl.h>

namespace Lumenfold::Builder {

Sign& Sign::add(std::string_view text) {
    hasher_.add(std::to_string(text.size()) + ":");
    hasher_.add(text);
    return *this;
}

Sign& Sign::add_file(const std::filesystem::path& file) {
    const std::optional<FileStamp> stamp = file_stamp(AT_FDCWD, file.c_str());
    return add(stamp ? std::to_string(stamp->size) + " " + std::to_string(stamp->modified)
                     : "missing");
}

std::string Sign::hex() const {
    return hex_of(hasher_.result());
}

} // namespace Lumenfold::Builder
