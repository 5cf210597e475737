#include "builder/report/interruption.h"

#include <array>
#include <atomic>
#include <csignal>

namespace Lumenfold::Builder {

namespace {

std::atomic<bool> interrupted{false};
std::atomic<int> received{0};
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free,
              "a signal's handler must not lock");

void receive(int number) {
    received = number;
    interrupted = true;
}

} // namespace

void watch_signals() {
    struct sigaction action = {};
    action.sa_handler = receive;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int number : std::array{SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        // One that the parent had us ignore, as nohup does, stays ignored.
        if (sigaction(number, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            sigaction(number, &action, nullptr);
    }
    std::signal(SIGPIPE, SIG_IGN);
}

bool is_interrupted() {
    return interrupted.load(std::memory_order_relaxed);
}

void request_interruption() {
    interrupted = true;
}

void end_by_signal() {
    const int number = received;
    if (number == 0)
        return;
    std::signal(number, SIG_DFL);
    std::raise(number);
}

} // namespace Lumenfold::Builder
