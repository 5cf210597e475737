#include "support/fake_platform.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace TestSupport {

FakePlatform::FakePlatform(Corvel::CorvelApp& app) {
    app.run_after = [this](int milliseconds, std::function<void()> action) {
        timers_.push_back({now_ + milliseconds, started_++, std::move(action)});
    };
    app.post = [this](std::function<void()> action) {
        timers_.push_back({now_, started_++, std::move(action)});
    };
    app.file_pick = [this](const Corvel::PickRequest& request,
                           const std::function<void(const std::string&)>& chosen) {
        picks.push_back(request);
        std::string answer;
        if (!next_picks.empty()) {
            answer = next_picks.front();
            next_picks.pop_front();
        }
        chosen(answer);
    };
    app.open_url = [this](const std::string& url) { opened_urls.push_back(url); };
    app.copy_text = [this](const std::string& text) { copied_texts.push_back(text); };
    app.process = [this](const std::vector<std::string>& argv, auto on_line, auto on_exit) {
        processes.push_back({argv, std::move(on_line), std::move(on_exit), false});
        return [this, number = processes.size() - 1] { processes[number].stopped = true; };
    };
    app.http = [this](const Corvel::HttpRequest& request, auto reply) {
        http_calls.push_back({request, std::move(reply)});
    };
}

void FakePlatform::advance(int milliseconds) {
    const long end = now_ + milliseconds;
    for (;;) {
        const auto next =
            std::min_element(timers_.begin(), timers_.end(), [](const Timer& a, const Timer& b) {
                return std::tie(a.due, a.order) < std::tie(b.due, b.order);
            });
        if (next == timers_.end() || next->due > end)
            break;
        const Timer timer = std::move(*next);
        timers_.erase(next);
        now_ = std::max(now_, timer.due);
        timer.action();
    }
    now_ = end;
}

} // namespace TestSupport
