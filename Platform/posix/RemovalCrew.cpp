#include "Platform/posix/RemovalCrew.h"

#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace lumo::platform {

namespace {

/// One of them is the place's own.
constexpr std::size_t mostDescriptors = 64;

RemovalLimits limitsOf(std::size_t threads, std::size_t atWork, std::size_t descriptors) {
    const std::size_t own = threads * (RemovalLimits::ownFolders + RemovalLimits::besides);
    return {threads, atWork, descriptors - 1 - own};
}

} // namespace

RemovalLimits RemovalLimits::ofOneThread() {
    return limitsOf(1, 1, mostDescriptors);
}

RemovalLimits RemovalLimits::ofThisProcess() {
    // Twice as many threads as work: whoever waits for a part lets another one work meanwhile.
    constexpr std::size_t mostAtWork = 4;
    const std::size_t atWork = std::clamp<std::size_t>(std::thread::hardware_concurrency(), 2, mostAtWork);
    rlimit limit = {};
    std::size_t allowed = mostDescriptors;
    // The rest of the process needs some as well.
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur / 2 < allowed) {
        allowed = static_cast<std::size_t>(limit.rlim_cur / 2);
    }
    const std::size_t threads = std::min(2 * atWork, allowed / (2 * (ownFolders + besides)));
    return threads < 2 ? ofOneThread() : limitsOf(threads, std::min(threads, atWork), allowed);
}

RemovalCrew::RemovalCrew(const RemovalLimits& limits, std::function<void(RemovalPart& part)> work)
    : mostAtWork_(limits.atWork), work_(std::move(work)),
      sharedFolders_(static_cast<std::ptrdiff_t>(limits.sharedFolders)), mostThreads_(limits.threads) {
    const Locked locked(mutex_);
    changed();
}

void RemovalCrew::give(std::shared_ptr<RemovalPart> part) {
    {
        const Locked locked(mutex_);
        if (isClosing_) {
            return; // All has ended, and nobody waits for it.
        }
        given_.push_back(std::move(part));
        if (idle_ < given_.size() && threads_.size() + 1 < mostThreads_) {
            try {
                threads_.emplace_back([this] { goOn(); });
            } catch (const std::system_error&) {
                mostThreads_ = threads_.size() + 1; // The system allows no more. The giver takes it back.
            }
        }
        changed();
    }
    hasPart_.notifyOne();
}

bool RemovalCrew::takeBack(const RemovalPart& part) {
    const Locked locked(mutex_);
    const auto found = std::ranges::find(given_, &part, &std::shared_ptr<RemovalPart>::get);
    if (found == given_.end()) {
        return false;
    }
    given_.erase(found);
    changed();
    return true;
}

void RemovalCrew::waitFor(const RemovalPart& part) {
    const Locked locked(mutex_);
    ++waiting_;
    changed();
    while (isBegun(part)) {
        hasFinished_.wait(mutex_);
    }
    --waiting_;
    changed();
}

void RemovalCrew::join() {
    std::vector<std::thread> threads;
    {
        const Locked locked(mutex_);
        isClosing_ = true;
        given_.clear();
        threads = std::exchange(threads_, {});
        mostThreads_ = 0;
        changed();
    }
    hasPart_.notifyAll();
    for (std::thread& thread : threads) {
        thread.join();
    }
}

bool RemovalCrew::takeFolder() {
    if (sharedFolders_.fetch_sub(1, std::memory_order_relaxed) > 0) {
        return true;
    }
    returnFolder();
    return false;
}

void RemovalCrew::note(int code) {
    const Locked locked(mutex_);
    firstError_ = firstError_ == 0 ? code : firstError_;
    hasFailedElsewhere_ = hasFailedElsewhere_ || code != EBUSY;
}

void RemovalCrew::endAtSpared() {
    hasMetSpared_.store(true, std::memory_order_release);
    end();
}

int RemovalCrew::firstError() const {
    const Locked locked(mutex_);
    return firstError_;
}

bool RemovalCrew::hasFailedElsewhere() const {
    const Locked locked(mutex_);
    return hasFailedElsewhere_;
}

void RemovalCrew::goOn() {
    while (const std::shared_ptr<RemovalPart> part = next()) {
        work_(*part);
        finish(*part);
    }
}

std::shared_ptr<RemovalPart> RemovalCrew::next() {
    const Locked locked(mutex_);
    ++idle_;
    changed();
    while (given_.empty() && !isClosing_) {
        hasPart_.wait(mutex_);
    }
    --idle_;
    if (given_.empty()) {
        return nullptr;
    }
    // The oldest was given from the furthest up, and nobody needs it so soon.
    begun_.push_back(std::move(given_.front()));
    given_.erase(given_.begin());
    changed();
    return begun_.back();
}

void RemovalCrew::finish(const RemovalPart& part) {
    {
        const Locked locked(mutex_);
        begun_.erase(std::ranges::find(begun_, &part, &std::shared_ptr<RemovalPart>::get));
    }
    hasFinished_.notifyAll();
}

bool RemovalCrew::isBegun(const RemovalPart& part) const {
    return std::ranges::find(begun_, &part, &std::shared_ptr<RemovalPart>::get) != begun_.end();
}

void RemovalCrew::changed() {
    const std::size_t threads = threads_.size() + 1;
    const std::size_t startable = mostThreads_ > threads ? mostThreads_ - threads : 0;
    const std::size_t atWork = threads - std::min(threads, idle_ + waiting_);
    isWanting_.store(idle_ + startable > given_.size() && atWork + given_.size() < mostAtWork_,
                     std::memory_order_relaxed);
}

} // namespace lumo::platform
