#include "Platform/TreeWalk.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/MountPoints.h"
#include "Platform/TreeTally.h"
#include "Platform/linux/OpenFolders.h"
#include "Platform/linux/WalkBreakdown.h"
#include "Platform/linux/WalkLimits.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace lumo::platform {

namespace {

constexpr std::size_t bufferBytes = std::size_t{32} * 1024;
using Buffer = std::unique_ptr<char[]>;

/// One entry as getdents64 writes it: the C library's `dirent64` has the same layout.
const dirent64* entryAt(const char* buffer, std::size_t offset) {
    return reinterpret_cast<const dirent64*>(buffer + offset);
}

bool isSelfOrParent(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

bool holds(const std::vector<std::string>& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

/// A piece of work: reading a folder, or counting a part of a large one that another thread reads.
struct Task {
    WalkedFolder* folder = nullptr;
    Buffer entries;
    std::size_t entryBytes = 0;
};

/// What one thread has found in one task, until it is merged.
struct Haul {
    TreeTally tally;
    std::vector<std::unique_ptr<WalkedFolder>> children;
    std::vector<std::string> setAside;
    bool hasPinnedParent = false;
    BreakdownHaul breakdown;
};

/// Has the lock held at the end of a scope, however that is left.
class Relock final {
  public:
    explicit Relock(OpenFolders::Lock& lock) : lock_(lock) {}
    ~Relock() {
        if (!lock_.owns_lock()) {
            lock_.lock();
        }
    }
    Relock(const Relock&) = delete;
    Relock& operator=(const Relock&) = delete;

  private:
    OpenFolders::Lock& lock_;
};

class Walk final {
  public:
    Walk(std::span<const TreeRequest> requests, const WalkContext& context)
        : requests_(requests), context_(context), limits_(WalkLimits::ofThisProcess()),
          open_(limits_.heldFolders), sums_(requests.size()) {}

    /// Breaks the one tree down within the limits.
    Walk(const TreeRequest& request, const WalkContext& context, const BreakdownLimits& limits)
        : Walk({&request, 1}, context) {
        breakdown_.emplace(limits);
    }

    std::vector<TreeSums> run() {
        {
            const std::stop_callback wake(context_.stop, [this] {
                const std::lock_guard<std::mutex> lock(mutex_);
                changed_.notify_all();
            });
            work();
            for (std::thread& thread : threads_) {
                thread.join();
            }
        }
        abandonRest();
        settleLinks();
        for (TreeSums& sums : sums_) {
            std::ranges::sort(sums.setAside);
        }
        return std::move(sums_);
    }

    TreeBreakdown runBreakdown() { return breakdown_->take(std::move(run().front())); }

  private:
    using Lock = OpenFolders::Lock;

    /// Queues the next tree that has not been begun; false when there is none. Trees are begun one by one as
    /// threads run out of work, since there may be very many.
    bool beginNextTree() {
        while (nextTree_ < requests_.size()) {
            const std::size_t index = nextTree_++;
            if (requests_[index].path.empty()) {
                continue;
            }
            auto root = std::make_unique<WalkedFolder>();
            root->name = requests_[index].path;
            root->tree = index;
            if (breakdown_) {
                breakdown_->begin(*root);
            }
            tasks_.push_back({root.release(), nullptr, 0});
            return true;
        }
        return false;
    }

    /// What every thread does until no work is left.
    void work() {
        Buffer buffer = std::make_unique_for_overwrite<char[]>(bufferBytes);
        ExtensionTally extensions;
        Lock lock(mutex_);
        while (std::optional<Task> task = next(lock)) {
            Haul haul;
            if (breakdown_) {
                haul.breakdown = breakdown_->haulFor(*task->folder, extensions);
            }
            if (task->entries) {
                countPart(*task, haul, lock);
            } else {
                readFolder(*task->folder, buffer, haul, lock);
            }
            finish(*task->folder, haul);
        }
        if (breakdown_) {
            breakdown_->add(extensions);
        }
        discard(lock);
    }

    /// Closes and frees what is no longer needed, without the lock.
    void discard(Lock& lock) {
        const std::vector<int> released = open_.takeReleased();
        const std::vector<std::unique_ptr<WalkedFolder>> finished = std::exchange(finished_, {});
        lock.unlock();
        for (const int descriptor : released) {
            close(descriptor);
        }
    }

    std::optional<Task> next(Lock& lock) {
        while (tasks_.empty() && !context_.stop.stop_requested() && !beginNextTree() && working_ > 0) {
            discard(lock);
            lock.lock();
            if (!tasks_.empty() || working_ == 0 || context_.stop.stop_requested()) {
                break;
            }
            ++idle_;
            changed_.wait(lock);
            --idle_;
        }
        if (tasks_.empty() || context_.stop.stop_requested()) {
            changed_.notify_all();
            return std::nullopt;
        }
        ++working_;
        Task task = std::move(tasks_.back());
        tasks_.pop_back();
        return task;
    }

    /// Called and left with the lock held, like `countPart`; both work without it in between.
    void readFolder(WalkedFolder& folder, Buffer& buffer, Haul& haul, Lock& lock) {
        const int descriptor = openFolder(folder, haul, lock);
        const Relock relock(lock);
        if (descriptor < 0) {
            return;
        }
        bool isShared = false;
        for (bool isFirst = true; !context_.stop.stop_requested(); isFirst = false) {
            const ssize_t count = getdents64(descriptor, buffer.get(), bufferBytes);
            if (count <= 0) {
                // A folder removed while it is read simply has no more entries.
                haul.tally.unreadableCount += count < 0 && errno != ENOENT ? 1 : 0;
                break;
            }
            const auto entryBytes = static_cast<std::size_t>(count);
            if (!isFirst && idle_.load(std::memory_order_relaxed) > 0) {
                handOver(folder, descriptor, isShared, {&folder, std::move(buffer), entryBytes});
                isShared = true;
                buffer = std::make_unique_for_overwrite<char[]>(bufferBytes);
            } else {
                countEntries(folder, descriptor, buffer.get(), entryBytes, haul);
            }
        }
        if (!isShared && haul.children.empty()) {
            close(descriptor);
            return;
        }
        lock.lock();
        if (isShared) {
            open_.unpin(folder);
        } else {
            open_.hold(folder, descriptor);
        }
    }

    void countPart(const Task& part, Haul& haul, Lock& lock) {
        // It was pinned for this part when the part was handed over.
        const int descriptor = part.folder->descriptor;
        lock.unlock();
        countEntries(*part.folder, descriptor, part.entries.get(), part.entryBytes, haul);
        lock.lock();
        open_.unpin(*part.folder);
    }

    /// Lets a waiting thread count a part of a large folder, which would otherwise keep one thread busy while
    /// the others have nothing left to do.
    void handOver(WalkedFolder& folder, int descriptor, bool isShared, Task part) {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (!isShared) {
            ++folder.pins; // For the thread that reads it.
            open_.hold(folder, descriptor);
        }
        ++folder.pins;
        ++folder.pending;
        tasks_.push_back(std::move(part));
        changed_.notify_one();
    }

    /// Opens the folder for reading; -1 when there is nothing to read. The lock is held before and not after;
    /// the parent stays pinned, which saves taking the lock once more.
    int openFolder(WalkedFolder& folder, Haul& haul, Lock& lock) {
        // Other parts of the process may have used up its descriptors: then ours are given back first. Those
        // that are in use come back soon, on a busy machine somewhat later.
        constexpr int mostAttempts = 8;
        constexpr int attemptsAtOnce = 3;
        for (int attempt = 0; attempt < mostAttempts; ++attempt) {
            if (attempt >= attemptsAtOnce) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1 << (attempt - attemptsAtOnce)));
            }
            if (attempt > 0) {
                lock.lock();
                open_.releaseUnused();
            }
            const int base = folder.parent != nullptr ? pinParent(folder, haul, lock) : AT_FDCWD;
            discard(lock);
            if (folder.parent == nullptr && attempt == 0 && !countRoot(folder, haul)) {
                return -1;
            }
            if (base == -1) {
                continue;
            }
            const int descriptor =
                openat(base, folder.name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            if (descriptor >= 0) {
                return descriptor;
            }
            if (errno != EMFILE && errno != ENFILE) {
                break;
            }
        }
        ++haul.tally.unreadableCount;
        return -1;
    }

    int pinParent(WalkedFolder& folder, Haul& haul, Lock& lock) {
        if (!haul.hasPinnedParent) {
            haul.hasPinnedParent = open_.pin(*folder.parent, lock) >= 0;
        }
        return haul.hasPinnedParent ? folder.parent->descriptor : -1;
    }

    /// Counts the entry that a tree starts with. True when it is a folder, whose contents are to be read.
    bool countRoot(WalkedFolder& root, Haul& haul) {
        struct stat status = {};
        if (fstatat(AT_FDCWD, root.name.c_str(), &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0) {
            ++haul.tally.unreadableCount;
            return false;
        }
        root.device = status.st_dev;
        root.inode = status.st_ino;
        const bool isFolder = S_ISDIR(status.st_mode);
        if (isFolder) {
            haul.tally.count(status, true, countingIn(root), noClones);
        } else {
            haul.breakdown.parts.reset(); // It is no part of itself.
            const std::size_t folderLength = root.name.size() - fileName(root.name).size();
            countFile(root, root.name.c_str() + folderLength, status, haul);
        }
        showProgress(1, haul.tally.allocatedBytes);
        return isFolder;
    }

    void countEntries(WalkedFolder& folder, int descriptor, const char* buffer, std::size_t bytes,
                      Haul& haul) {
        // A slow disk may need milliseconds an entry, and a stop must not wait for a whole buffer.
        constexpr int entriesBetweenStopChecks = 32;
        const std::int64_t bytesBefore = haul.tally.allocatedBytes;
        std::int64_t entries = 0;
        for (std::size_t offset = 0; offset < bytes;) {
            const dirent64* entry = entryAt(buffer, offset);
            offset += entry->d_reclen;
            if (isSelfOrParent(entry->d_name)) {
                continue;
            }
            if (++entries % entriesBetweenStopChecks == 0 && context_.stop.stop_requested()) {
                break;
            }
            countEntry(folder, descriptor, entry->d_name, haul);
        }
        showProgress(entries, haul.tally.allocatedBytes - bytesBefore);
    }

    void countEntry(WalkedFolder& folder, int descriptor, const char* name, Haul& haul) {
        struct stat status = {};
        if (fstatat(descriptor, name, &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0) {
            ++haul.tally.unreadableCount;
            return;
        }
        if (S_ISDIR(status.st_mode)) {
            countFolder(folder, descriptor, name, status, haul);
        } else {
            countFile(folder, name, status, haul);
        }
    }

    /// Counts an entry that is no folder.
    void countFile(const WalkedFolder& folder, const char* name, const struct stat& status, Haul& haul) {
        const TreePolicy& policy = *requests_[folder.tree].policy;
        const bool isDated = !folder.isUndated && !holds(policy.undatedFiles, name);
        const std::int64_t bytesBefore = haul.tally.allocatedBytes;
        const Counted counted = haul.tally.count(status, isDated, countingIn(folder), noClones);
        if (!breakdown_) {
            return;
        }
        if (counted == Counted::linkedFile) {
            haul.breakdown.linked.emplace_back(identityOf(status), folder.pathOf(name));
        } else {
            haul.breakdown.addFile(name, haul.tally.allocatedBytes - bytesBefore, counted == Counted::file);
        }
    }

    /// Counts a folder in a folder, and keeps it for being read.
    void countFolder(WalkedFolder& folder, int descriptor, const char* name, const struct stat& status,
                     Haul& haul) {
        // Only mounts make a folder its own descendant; such a cycle is no entry of its own.
        if (folder.isWithin(status.st_dev, status.st_ino)) {
            return;
        }
        const TreePolicy& policy = *requests_[folder.tree].policy;
        if (isSetAside(policy, name, [&] { return folder.pathOf(name); })) {
            haul.setAside.push_back(folder.pathOf(name));
            return;
        }
        const std::int64_t bytesBefore = haul.tally.allocatedBytes;
        haul.tally.count(status, true, countingIn(folder), noClones);
        const std::int64_t bytes = haul.tally.allocatedBytes - bytesBefore;
        if (status.st_dev != folder.device || mounts_.isAt(descriptor, name)) {
            if (haul.breakdown.parts) {
                haul.breakdown.parts->add(name, bytes, true);
            }
            return;
        }
        auto child = std::make_unique<WalkedFolder>();
        child->parent = &folder;
        child->name = name;
        child->tree = folder.tree;
        child->device = status.st_dev;
        child->inode = status.st_ino;
        child->depth = folder.depth + 1;
        child->isUndated = folder.isUndated || holds(policy.undatedFolders, name);
        if (breakdown_) {
            breakdown_->place(*child, bytes, haul.breakdown);
        }
        haul.children.push_back(std::move(child));
    }

    static std::optional<FileIdentity> noClones() { return std::nullopt; }

    Counting countingIn(const WalkedFolder& folder) { return {context_, linked_, folder.tree}; }

    /// Once all threads have ended.
    void settleLinks() {
        linked_.settle(sums_, context_, [this](FileIdentity file, std::optional<std::int64_t> bytes) {
            if (breakdown_) {
                breakdown_->settle(file, bytes);
            }
        });
    }

    void showProgress(std::int64_t entries, std::int64_t bytes) const {
        if (context_.progress != nullptr) {
            context_.progress->entries.fetch_add(entries, std::memory_order_relaxed);
            context_.progress->bytes.fetch_add(bytes, std::memory_order_relaxed);
        }
    }

    /// Merges what a task found and queues what it leaves to do. With the lock held.
    void finish(WalkedFolder& folder, Haul& haul) {
        if (haul.hasPinnedParent) {
            open_.unpin(*folder.parent);
        }
        TreeSums& sums = sums_[folder.tree];
        haul.tally.addTo(sums);
        std::ranges::move(haul.setAside, std::back_inserter(sums.setAside));
        if (breakdown_) {
            breakdown_->merge(folder, haul.tally.allocatedBytes, std::move(haul.breakdown));
        }
        folder.pending += static_cast<std::uint32_t>(haul.children.size());
        for (std::unique_ptr<WalkedFolder>& child : haul.children) {
            tasks_.push_back({child.release(), nullptr, 0});
        }
        --working_;
        letGo(&folder);
        shareOut(haul.children.size());
    }

    void shareOut(std::size_t newTasks) {
        for (std::size_t woken = std::min<std::size_t>(idle_, newTasks); woken > 0; --woken) {
            changed_.notify_one();
        }
        // Threads are started when there is something for them to do: most measured trees are small.
        if (idle_ == 0 && tasks_.size() + (requests_.size() - nextTree_) > 1 &&
            threads_.size() + 1 < limits_.threads && !context_.stop.stop_requested()) {
            try {
                threads_.emplace_back([this] { work(); });
            } catch (const std::system_error&) {
                // The system allows no more threads; those that run do the work.
            }
        }
    }

    /// One reason less for the folder to stay; without any it goes, and so may its ancestors.
    void letGo(WalkedFolder* folder) {
        while (folder != nullptr && --folder->pending == 0) {
            open_.release(*folder);
            WalkedFolder* parent = folder->parent;
            if (breakdown_) {
                breakdown_->end(*folder);
            }
            finished_.emplace_back(folder);
            folder = parent;
        }
    }

    /// After a stop: gives back what the unfinished tasks hold.
    void abandonRest() {
        for (const Task& task : tasks_) {
            letGo(task.folder);
        }
        tasks_.clear();
    }

    const std::span<const TreeRequest> requests_;
    const WalkContext& context_;
    const WalkLimits limits_;
    const MountPoints mounts_ = MountPoints::ofThisProcess();
    LinkedFiles linked_;

    std::mutex mutex_; ///< Guards everything below.
    std::condition_variable changed_;
    OpenFolders open_;
    std::vector<Task> tasks_;
    std::size_t nextTree_ = 0;                            ///< The first request that has not been begun.
    std::vector<std::unique_ptr<WalkedFolder>> finished_; ///< To be freed without the lock.
    std::vector<TreeSums> sums_;
    std::optional<WalkBreakdown> breakdown_; ///< Of the one tree, when it is to be broken down.
    std::vector<std::thread> threads_;
    std::size_t working_ = 0;
    std::atomic<std::size_t> idle_ = 0; ///< Also read without the lock, as a hint.
};

} // namespace

std::vector<TreeSums> walkTrees(std::span<const TreeRequest> requests, const WalkContext& context) {
    return Walk(requests, context).run();
}

TreeBreakdown breakDownTree(const TreeRequest& request, const BreakdownLimits& limits,
                            const WalkContext& context) {
    return Walk(request, context, limits).runBreakdown();
}

} // namespace lumo::platform
