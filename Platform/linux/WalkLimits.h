#pragma once

#include <sys/resource.h>

#include <algorithm>
#include <cstddef>
#include <thread>

namespace lumo::platform {

/// How many threads and kept descriptors a walk may use.
struct WalkLimits {
    std::size_t threads;
    std::size_t heldFolders;

    /// Waiting for the disk is what takes the time when nothing is cached, so there are more threads than
    /// cores.
    static WalkLimits ofThisProcess() {
        // 64 descriptors at the most, 16 of them left to the rest of the process and to folders being
        // reopened.
        constexpr std::size_t mostDescriptors = 64;
        constexpr std::size_t reserved = 16;
        rlimit limit = {};
        std::size_t allowed = mostDescriptors;
        if (getrlimit(RLIMIT_NOFILE, &limit) == 0) {
            allowed = std::min<std::size_t>(allowed, limit.rlim_cur);
        }
        const std::size_t usable = std::max<std::size_t>(allowed, reserved + 4) - reserved;
        const std::size_t wanted =
            std::clamp<std::size_t>(std::size_t{4} * std::thread::hardware_concurrency(), 8, 16);
        const std::size_t threads = std::clamp<std::size_t>(usable / 4, 1, wanted);
        // Each thread reads one folder, and what folders lose is closed a moment later.
        return {threads, (usable - threads) * 2 / 3};
    }
};

} // namespace lumo::platform
