#pragma once

namespace TestSupport {

/// What the disk under a test refuses while this lives; calls of the system's functions pass
/// through the test's program.
class FailingDisk {
public:
    struct Faults {
        /// No room can be reserved, as on some file systems: a write finds out by itself that the
        /// disk is full.
        bool cannot_reserve = false;
        int renames = -1; ///< that still succeed; negative for all
    };

    explicit FailingDisk(Faults faults);
    ~FailingDisk();
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;
};

} // namespace TestSupport
