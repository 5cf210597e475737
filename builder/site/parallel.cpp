#include "builder/site/parallel.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace Lumenfold::Builder {

void for_each_index(std::size_t count, unsigned threads,
                    const std::function<void(std::size_t)>& work) {
    if (threads == 0)
        threads = std::max(1U, std::thread::hardware_concurrency());
    std::atomic<std::size_t> next{0};
    const auto run = [&] {
        for (std::size_t index = next++; index < count; index = next++)
            work(index);
    };
    std::vector<std::jthread> others;
    for (std::size_t i = 1; i < std::min<std::size_t>(threads, count); ++i)
        others.emplace_back(run);
    run();
}

} // namespace Lumenfold::Builder
