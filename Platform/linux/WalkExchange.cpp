#include "Platform/linux/WalkExchange.h"

#include <system_error>
#include <utility>

namespace lumo::platform {

WalkExchange::WalkExchange(std::size_t requests, std::size_t threads, std::stop_token stop,
                           std::function<void()> work)
    : requests_(requests), stop_(std::move(stop)), work_(std::move(work)), mostThreads_(threads),
      wake_(stop_, [this] {
          const Locked locked(mutex_);
          hasChanged_.notifyAll();
      }) {}

std::optional<WalkJob> WalkExchange::take() {
    const Locked locked(mutex_);
    ++idle_;
    changed();
    while (waitingJobs() == 0 && idle_ < threads_.size() + 1 && !stop_.stop_requested()) {
        hasChanged_.wait(mutex_);
    }
    if (waitingJobs() == 0 || stop_.stop_requested()) {
        hasChanged_.notifyAll(); // Nobody can give anything any more; this thread stays idle.
        return std::nullopt;
    }
    --idle_;
    WalkJob job;
    if (given_.empty()) {
        job.request = nextRequest_++;
    } else {
        job = std::move(given_.back());
        given_.pop_back();
    }
    startThreadIfUseful();
    changed();
    return job;
}

void WalkExchange::give(WalkJob job) {
    {
        const Locked locked(mutex_);
        given_.push_back(std::move(job));
        startThreadIfUseful();
        changed();
    }
    hasChanged_.notifyOne(); // Whoever wakes finds the mutex free.
}

void WalkExchange::startThreadIfUseful() {
    if (idle_ >= waitingJobs() || threads_.size() + 1 >= mostThreads_ || stop_.stop_requested()) {
        return;
    }
    try {
        threads_.emplace_back(work_);
    } catch (const std::system_error&) {
        mostThreads_ = threads_.size() + 1; // The system allows no more; those that run do the work.
    }
}

void WalkExchange::changed() {
    const std::size_t mayTake = idle_ + mostThreads_ - (threads_.size() + 1);
    wanting_.store(static_cast<std::ptrdiff_t>(mayTake) - static_cast<std::ptrdiff_t>(waitingJobs()),
                   std::memory_order_relaxed);
}

void WalkExchange::join() {
    // Nobody starts threads any more: the one that asks was the last to be told that all is done, or a stop
    // keeps others from it.
    std::vector<std::thread> threads;
    {
        const Locked locked(mutex_);
        threads = std::exchange(threads_, {});
        mostThreads_ = 0;
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace lumo::platform
