#pragma once

#include "runtime/corvel_app.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace TestSupport {

/// Fakes in every service slot of an application: timers on a clock moved by hand, recorded
/// requests, and dialogs that give the answers queued for them.
class FakePlatform {
public:
    struct Process {
        std::vector<std::string> argv;
        std::function<void(const std::string&)> on_line;
        std::function<void(int)> on_exit;
        bool stopped = false;
    };
    struct HttpCall {
        Corvel::HttpRequest request;
        std::function<void(const Corvel::HttpResponse&)> reply;
    };

    /// Fills the slots. The platform must live as long as the application uses them.
    explicit FakePlatform(Corvel::CorvelApp& app);

    /// Moves the clock and fires what is due, in the order of its time.
    void advance(int milliseconds);
    std::size_t timers_waiting() const { return timers_.size(); }

    std::deque<std::string> next_picks; ///< answers of the next file dialogs; then cancelled
    std::vector<Corvel::PickRequest> picks;
    std::vector<std::string> opened_urls;
    std::vector<std::string> copied_texts;
    std::vector<Process> processes;
    std::vector<HttpCall> http_calls;

private:
    struct Timer {
        long due;
        long order; ///< of its start, so that equal times fire in turn
        std::function<void()> action;
    };
    std::vector<Timer> timers_;
    long now_ = 0;
    long started_ = 0;
};

} // namespace TestSupport
