#include "LumoCore/Basics/Parallel.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <vector>

namespace lumo {

void parallelFor(std::size_t count, const std::stop_token& stop,
                 const std::function<void(std::size_t)>& work) {
    // The work waits for the disk, so there are more threads than cores, but none for a handful of items.
    constexpr std::size_t mostThreads = 8;
    constexpr std::size_t itemsPerThread = 4;
    std::atomic<std::size_t> next = 0;
    const auto run = [&] {
        for (std::size_t index = next++; index < count && !stop.stop_requested(); index = next++) {
            work(index);
        }
    };
    std::vector<std::jthread> threads;
    try {
        while (threads.size() + 1 < std::min(mostThreads, count / itemsPerThread)) {
            threads.emplace_back(run);
        }
    } catch (const std::system_error&) {
        // The system allows no more threads; those that run do the work.
    }
    run();
}

} // namespace lumo
