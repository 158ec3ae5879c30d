#include "TarvoCLI/Watching.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace tarvo {

void watch(const std::function<void()>& work, const std::function<void(int ticks)>& tick) {
    using namespace std::chrono_literals;
    std::mutex mutex;
    std::condition_variable finished;
    bool isFinished = false;
    const std::jthread worker([&] {
        work();
        const std::lock_guard<std::mutex> lock(mutex);
        isFinished = true;
        finished.notify_one();
    });
    std::unique_lock<std::mutex> lock(mutex);
    for (int ticks = 1; !finished.wait_for(lock, 20ms, [&] { return isFinished; }); ++ticks) {
        tick(ticks);
    }
}

} // namespace tarvo
