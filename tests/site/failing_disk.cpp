#include "site/failing_disk.h"

#include <cerrno>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>

namespace {

TestSupport::FailingDisk::Faults active;

template <class Call>
Call next_call(const char* name) {
    return reinterpret_cast<Call>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// These stand before the system's own in the test's program.

extern "C" int posix_fallocate(int file, off_t offset, off_t size) {
    static const auto next = next_call<int (*)(int, off_t, off_t)>("posix_fallocate");
    return active.cannot_reserve ? EOPNOTSUPP : next(file, offset, size);
}

extern "C" int rename(const char* from, const char* to) noexcept {
    static const auto next = next_call<int (*)(const char*, const char*)>("rename");
    if (active.renames == 0) {
        errno = EIO;
        return -1;
    }
    if (active.renames > 0)
        --active.renames;
    return next(from, to);
}

namespace TestSupport {

FailingDisk::FailingDisk(Faults faults) {
    active = faults;
}

FailingDisk::~FailingDisk() {
    active = {};
}

} // namespace TestSupport
