#pragma once

#include <sys/resource.h>

#include <algorithm>
#include <cstddef>
#include <thread>

namespace lumo::platform {

/// How many threads a walk may use, and how many folders each of them may hold open.
struct WalkLimits {
    std::size_t threads;
    std::size_t openFolders;

    /// Waiting for the disk is what takes the time when nothing is cached, so there are more threads than
    /// cores. When all is cached the surplus costs nothing: whoever finds no work sleeps.
    static WalkLimits ofThisProcess() {
        // The rest of the process needs some as well: half of what it may have open is left to it.
        constexpr std::size_t mostDescriptors = 256;
        // Besides those of its stack a thread holds one that it is opening, and one that it gives away.
        constexpr std::size_t besides = 2;
        constexpr std::size_t leastPerThread = besides + 4;
        rlimit limit = {};
        std::size_t allowed = mostDescriptors;
        if (getrlimit(RLIMIT_NOFILE, &limit) == 0) {
            allowed = std::clamp<std::size_t>(limit.rlim_cur / 2, leastPerThread, mostDescriptors);
        }
        const std::size_t wanted =
            std::clamp<std::size_t>(std::size_t{8} * std::thread::hardware_concurrency(), 8, 16);
        const std::size_t threads = std::min(allowed / leastPerThread, wanted);
        return {threads, allowed / threads - besides};
    }
};

} // namespace lumo::platform
