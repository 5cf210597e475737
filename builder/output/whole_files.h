#pragma once

#include "builder/files/file_io.h"

#include <atomic>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace Lumenfold::Builder {

/// Writes files whole: each is made in a folder of its own and moved to its place, in the stead of
/// a file or link there. Several threads may write different files. The folder is removed at the
/// end, with what a killed build left in it.
class WholeFiles {
public:
    explicit WholeFiles(const std::filesystem::path& output_folder);
    ~WholeFiles();
    WholeFiles(const WholeFiles&) = delete;
    WholeFiles& operator=(const WholeFiles&) = delete;

    /// Makes the folder; before the first write.
    bool start(std::error_code& error);
    /// Nothing, and what was there unchanged, on an error.
    std::optional<FileStamp> write(const std::filesystem::path& place, std::string_view bytes,
                                   std::error_code& error);

private:
    std::filesystem::path folder_;
    std::atomic<unsigned> next_{0};
};

} // namespace Lumenfold::Builder
