#include <gtest/gtest.h>

#include <cstdlib>
#include <unistd.h>

namespace {

/// Thousands of files rewritten in place take minutes where the file system flushes each to disk,
/// so the temporary folders go into memory unless the caller chose a place.
class FilesInMemory : public testing::Environment {
public:
    void SetUp() override {
        constexpr const char* MEMORY = "/dev/shm";
        if (::access(MEMORY, W_OK | X_OK) == 0)
            ::setenv("TMPDIR", MEMORY, 0);
    }
};

const testing::Environment* const files_in_memory =
    testing::AddGlobalTestEnvironment(new FilesInMemory);

} // namespace
