#include "builder/serve/connection_threads.h"

#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

namespace Lumenfold::Builder {

namespace {

constexpr std::chrono::seconds REST{2}; ///< how long a thread waits for more to do

} // namespace

void ConnectionThreads::enqueue(std::function<void()> task) {
    const std::scoped_lock lock(mutex_);
    tasks_.push_back(std::move(task));
    if (tasks_.size() > idle_ && threads_ < MOST) {
        try {
            std::thread([this] { run(); }).detach();
            ++threads_;
        } catch (const std::system_error&) {
            // The system gives no more threads: those that run take this task, too.
        }
    }
    wake_.notify_one();
}

void ConnectionThreads::run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        ++idle_;
        wake_.wait_for(lock, REST, [this] { return ending_ || !tasks_.empty(); });
        --idle_;
        if (tasks_.empty())
            break;
        std::function<void()> task = std::move(tasks_.front());
        tasks_.pop_front();
        lock.unlock();
        task();
        task = nullptr;
        lock.lock();
    }
    --threads_;
    ended_.notify_all();
}

void ConnectionThreads::shutdown() {
    std::unique_lock lock(mutex_);
    ending_ = true;
    wake_.notify_all();
    ended_.wait(lock, [this] { return threads_ == 0; });
}

} // namespace Lumenfold::Builder
