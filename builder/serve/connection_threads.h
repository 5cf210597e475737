#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <httplib.h>
#include <mutex>

namespace Lumenfold::Builder {

/// Threads that come with the connections, one for each up to a bound, and go when there is nothing
/// to do: so many slow clients can be waited for while others are served.
class ConnectionThreads : public httplib::TaskQueue {
public:
    static constexpr std::size_t MOST = 1024;

    void enqueue(std::function<void()> task) override;
    /// Waits for all tasks and threads to end.
    void shutdown() override;

private:
    void run();

    std::mutex mutex_;
    std::condition_variable wake_;
    std::condition_variable ended_;
    std::deque<std::function<void()>> tasks_;
    std::size_t threads_ = 0;
    std::size_t idle_ = 0;
    bool ending_ = false;
};

} // namespace Lumenfold::Builder
