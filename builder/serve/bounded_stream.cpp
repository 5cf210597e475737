#include "builder/serve/bounded_stream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>

namespace Lumenfold::Builder {

using Clock = std::chrono::steady_clock;

bool BoundedStream::wait_for(short event) const {
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end_ - Clock::now());
        if (left.count() <= 0)
            return false;
        pollfd waiting{socket_, event, 0};
        const int ready = ::poll(&waiting, 1, static_cast<int>(left.count()));
        if (ready >= 0 || errno != EINTR)
            return ready > 0;
    }
}

ssize_t BoundedStream::fill() {
    if (taken_ >= MOST_BYTES || !wait_for(POLLIN))
        return -1;
    const ssize_t got = ::recv(socket_, block_.data(), block_.size(), 0);
    at_ = 0;
    filled_ = static_cast<std::size_t>(std::max<ssize_t>(got, 0));
    taken_ += filled_;
    return got;
}

ssize_t BoundedStream::read(char* bytes, std::size_t size) {
    if (at_ == filled_)
        if (const ssize_t got = fill(); got <= 0)
            return got;
    const std::size_t count = std::min(size, filled_ - at_);
    std::memcpy(bytes, block_.data() + at_, count);
    at_ += count;
    return static_cast<ssize_t>(count);
}

ssize_t BoundedStream::write(const char* bytes, std::size_t size) {
    return wait_for(POLLOUT) ? ::send(socket_, bytes, size, MSG_NOSIGNAL | MSG_DONTWAIT) : -1;
}

} // namespace Lumenfold::Builder
