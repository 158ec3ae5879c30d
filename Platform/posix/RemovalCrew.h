#pragma once

#include "Platform/AnnotatedMutex.h"
#include "Platform/Descriptor.h"
#include "Platform/FolderStatus.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace lumo::platform {

/// An entry as its folder lists it.
struct EntryName {
    std::string name;
    bool mayBeFolder = true; ///< Also where the kind is not told: trying it as a folder tells without asking.
};

/// Entries of one folder that a thread leaves to another one, and what became of them. It owns all it needs.
struct RemovalPart {
    Descriptor folder; ///< The folder around them.
    FolderStatus status;
    std::vector<EntryName> entries;

    // What became of them, once it is done.
    std::vector<std::size_t> stuck = {}; ///< Hashes of the names that could not be removed.
    bool hasRemoved = false;             ///< At least one.
};

/// How many threads may remove one tree together, and how many folders they may hold open.
struct RemovalLimits {
    std::size_t threads = 1; ///< With those that wait for others.
    std::size_t atWork = 1;  ///< Without those.
    std::size_t sharedFolders = 0;

    /// Each thread may hold so many levels open, and needs so many descriptors besides: its part's, and two
    /// for a moment on the way into a folder.
    static constexpr std::size_t ownFolders = 3;
    static constexpr std::size_t besides = 3;

    static RemovalLimits ofOneThread();
    static RemovalLimits ofThisProcess();
};

/// The threads that remove one tree, and what they all must know. Threads are started one after the other as
/// there are parts for them: most trees are small.
class RemovalCrew final {
  public:
    /// `work` removes a part, on a thread of the crew. It may give, take back and wait itself.
    RemovalCrew(const RemovalLimits& limits, std::function<void(RemovalPart& part)> work);
    ~RemovalCrew() { join(); }
    RemovalCrew(const RemovalCrew&) = delete;
    RemovalCrew& operator=(const RemovalCrew&) = delete;

    /// True when another thread could work on something. Costs next to nothing.
    [[nodiscard]] bool isWanting() const { return isWanting_.load(std::memory_order_relaxed); }

    void give(std::shared_ptr<RemovalPart> part);
    /// True when nobody had begun it: then it is the caller's again, who must do what it holds. Nobody waits
    /// for a part that lies idle, so threads can never wait for each other.
    bool takeBack(const RemovalPart& part);
    /// Returns when the part is done.
    void waitFor(const RemovalPart& part);

    /// Waits for the parts that have been begun, and drops the others: after an end nobody does them.
    void join();

    /// One of the open folders that threads may have beyond their own.
    bool takeFolder();
    void returnFolder() { sharedFolders_.fetch_add(1, std::memory_order_relaxed); }

    /// Keeps the first reason of all.
    void note(int code);
    /// Nobody touches another entry.
    void end() { hasEnded_.store(true, std::memory_order_release); }
    void endAtSpared();
    [[nodiscard]] bool hasEnded() const { return hasEnded_.load(std::memory_order_acquire); }
    [[nodiscard]] bool hasMetSpared() const { return hasMetSpared_.load(std::memory_order_acquire); }
    [[nodiscard]] int firstError() const;
    /// Other than at a mount.
    [[nodiscard]] bool hasFailedElsewhere() const;

  private:
    void goOn();
    std::shared_ptr<RemovalPart> next();
    void finish(const RemovalPart& part);
    [[nodiscard]] bool isBegun(const RemovalPart& part) const LUMO_REQUIRES(mutex_);
    void changed() LUMO_REQUIRES(mutex_);

    const std::size_t mostAtWork_;
    const std::function<void(RemovalPart& part)> work_;
    std::atomic<bool> isWanting_ = false;
    std::atomic<bool> hasEnded_ = false;
    std::atomic<bool> hasMetSpared_ = false;
    std::atomic<std::ptrdiff_t> sharedFolders_;

    mutable AnnotatedMutex mutex_;
    AnnotatedCondition hasPart_; ///< Or none will come any more.
    AnnotatedCondition hasFinished_;
    std::size_t mostThreads_ LUMO_GUARDED_BY(mutex_);
    std::vector<std::shared_ptr<RemovalPart>> given_ LUMO_GUARDED_BY(mutex_); ///< And not begun.
    std::vector<std::shared_ptr<RemovalPart>> begun_ LUMO_GUARDED_BY(mutex_);
    std::size_t idle_ LUMO_GUARDED_BY(mutex_) = 0;
    std::size_t waiting_ LUMO_GUARDED_BY(mutex_) = 0;
    bool isClosing_ LUMO_GUARDED_BY(mutex_) = false;
    int firstError_ LUMO_GUARDED_BY(mutex_) = 0;
    bool hasFailedElsewhere_ LUMO_GUARDED_BY(mutex_) = false;
    std::vector<std::thread> threads_ LUMO_GUARDED_BY(mutex_); ///< Besides the one that began.
};

} // namespace lumo::platform
