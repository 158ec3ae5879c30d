#pragma once

#include "Platform/AnnotatedMutex.h"
#include "Platform/Descriptor.h"
#include "Platform/WalkCollector.h"
#include "Platform/linux/FolderStack.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace lumo::platform {

/// A piece of a walk that a thread does by itself. It owns all that it needs.
struct WalkJob {
    std::size_t request = 0;
    /// None when the request is still to be begun.
    Descriptor folder = {};
    std::string path = {}; ///< Of the folder; ends with a slash.
    std::string name = {}; ///< Its last component.
    FoundFolder found = {};
    /// A part of the folder's entries, as the kernel gave them; without one the whole folder is to be read.
    std::unique_ptr<char[]> entries = {};
    std::size_t entryBytes = 0;
    /// The folder around it, or itself when it is a part; none when nobody collects.
    std::unique_ptr<FolderClaim> claim = {};
};

/// Where threads that have nothing left to do get work from the others. It starts the threads, one after the
/// other as there is work for them: most trees are small.
class WalkExchange final {
  public:
    /// `work` is what each further thread does, from its start to the walk's end.
    WalkExchange(std::size_t requests, std::size_t threads, std::stop_token stop, std::function<void()> work);

    /// The next job for a thread that has finished its last one; none once all is done or a stop is
    /// requested. Waits while others may still have something to give.
    std::optional<WalkJob> take();

    /// True when somebody would take a job. Costs next to nothing.
    [[nodiscard]] bool isWanting() const { return wanting_.load(std::memory_order_relaxed) > 0; }

    void give(WalkJob job);

    /// Waits for the further threads, once the first has got no job any more.
    void join();

  private:
    /// How many jobs nobody has taken, the requests among them.
    [[nodiscard]] std::size_t waitingJobs() const LUMO_REQUIRES(mutex_) {
        return given_.size() + (requests_ - nextRequest_);
    }
    void startThreadIfUseful() LUMO_REQUIRES(mutex_);
    void changed() LUMO_REQUIRES(mutex_);

    const std::size_t requests_;
    const std::stop_token stop_;
    const std::function<void()> work_;
    std::atomic<std::ptrdiff_t> wanting_ = 0;

    AnnotatedMutex mutex_;
    AnnotatedCondition hasChanged_;
    std::vector<WalkJob> given_ LUMO_GUARDED_BY(mutex_);
    std::size_t nextRequest_ LUMO_GUARDED_BY(mutex_) = 0;
    std::size_t mostThreads_ LUMO_GUARDED_BY(mutex_);
    std::size_t idle_ LUMO_GUARDED_BY(mutex_) = 0;
    std::vector<std::thread> threads_ LUMO_GUARDED_BY(mutex_); ///< Besides the one that began.
    const std::stop_callback<std::function<void()>> wake_;
};

} // namespace lumo::platform
