#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>

namespace Lumenfold::Builder {

/// A folder that this process alone works in. The system frees it at the end of the process,
/// however that comes.
class FolderLock {
public:
    /// Nothing if another process holds it (then `error` is `std::errc::device_or_resource_busy`),
    /// or it is no folder or cannot be locked.
    static std::optional<FolderLock> take(const std::filesystem::path& folder,
                                          std::error_code& error);
    ~FolderLock();
    FolderLock(FolderLock&& other) noexcept;
    FolderLock& operator=(FolderLock&& other) noexcept;

    /// An open descriptor of the folder, ours.
    int descriptor() const { return descriptor_; }

private:
    explicit FolderLock(int descriptor)
        : descriptor_(descriptor) {}

    int descriptor_ = -1;
};

} // namespace Lumenfold::Builder
