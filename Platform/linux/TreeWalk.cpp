#include "Platform/TreeWalk.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/AnnotatedMutex.h"
#include "Platform/MountPoints.h"
#include "Platform/TreeTally.h"
#include "Platform/WalkCollector.h"
#include "Platform/linux/FolderStack.h"
#include "Platform/linux/WalkExchange.h"
#include "Platform/linux/WalkLimits.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
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

std::optional<FileIdentity> noClones() {
    return std::nullopt;
}

/// What the threads of one walk share.
class Walk final {
  public:
    Walk(std::span<const TreeRequest> trees, const WalkContext& theirContext, WalkCollection* theirCollection)
        : requests(trees), context(theirContext), collection(theirCollection),
          exchange(trees.size(), limits.threads, theirContext.stop, [this] { work(); }), sums_(trees.size()) {
    }

    std::vector<TreeSums> run() {
        {
            const Locked locked(mutex_);
            countKnown(requests, sums_, linked);
        }
        work();
        exchange.join();
        const Locked locked(mutex_);
        for (TreeSums& sums : sums_) {
            std::ranges::sort(sums.setAside);
        }
        keepTrees(requests, sums_);
        linked.settle(sums_, context, [this](FileIdentity file, std::optional<std::int64_t> bytes) {
            if (collection != nullptr) {
                collection->settle(file, bytes);
            }
        });
        return std::move(sums_);
    }

    /// Adds what a thread has found in one job.
    void add(std::size_t request, const TreeTally& tally, std::vector<std::string> setAside,
             std::vector<LinkedFile> kept) {
        const Locked locked(mutex_);
        tally.addTo(sums_[request]);
        std::ranges::move(setAside, std::back_inserter(sums_[request].setAside));
        if (MeasuredTree* tree = requests[request].kept) {
            keepPart(*tree, tally, std::move(kept));
        }
    }

    const std::span<const TreeRequest> requests;
    const WalkContext& context;
    WalkCollection* const collection; ///< None when only sums are wanted.
    const WalkLimits limits = WalkLimits::ofThisProcess();
    const MountPoints mounts = MountPoints::ofThisProcess();
    LinkedFiles linked;
    WalkExchange exchange;

  private:
    void work();

    AnnotatedMutex mutex_;
    std::vector<TreeSums> sums_ LUMO_GUARDED_BY(mutex_);
};

/// One thread of a walk. It goes through its job depth first and talks to nobody until somebody has nothing
/// to do.
class Walker final {
  public:
    explicit Walker(Walk& walk)
        : walk_(walk), collector_(walk.collection != nullptr ? walk.collection->collector() : nullptr),
          folders_(walk.limits.openFolders) {}

    void run() {
        while (std::optional<WalkJob> job = walk_.exchange.take()) {
            request_ = job->request;
            policy_ = walk_.requests[request_].policy;
            const bool isBelowAnother = job->folder.isOpen() && !job->entries;
            levelsAround_ = isBelowAnother ? 1 : 0;
            if (job->claim) {
                collector_->resume(std::move(job->claim));
            }
            begin(*job);
            goThrough();
            if (isBelowAnother) {
                tellLeft();
            }
            finish();
        }
    }

  private:
    static constexpr std::int64_t entriesBetweenGifts = 128;

    static Buffer newBuffer() { return std::make_unique_for_overwrite<char[]>(bufferBytes); }

    [[nodiscard]] bool isStopped() const { return walk_.context.stop.stop_requested(); }

    void begin(WalkJob& job) {
        if (!job.folder.isOpen()) {
            beginTree();
            return;
        }
        if (!job.entries) {
            tellEntered(job.name, job.found);
        }
        folders_.begin(std::move(job.folder), std::move(job.path), job.found);
        if (job.entries) {
            countEntries(job.entries.get(), job.entryBytes);
        } else {
            readFolder();
        }
    }

    /// Counts the entry that a tree starts with, and reads it when it is a folder.
    void beginTree() {
        const TreeRequest& request = walk_.requests[request_];
        const std::string path(request.path);
        struct stat status = {};
        if (path.empty() || request.known != nullptr) {
            return;
        }
        if (fstatat(AT_FDCWD, path.c_str(), &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0) {
            miss(path);
            return;
        }
        ++entriesNotShown_;
        if (!S_ISDIR(status.st_mode)) {
            const std::string_view name = fileName(path);
            const std::string_view folder = std::string_view(path).substr(0, path.size() - name.size());
            countOther(name, folder, status, policy_->isDatedFile(name, false));
            return;
        }
        const FoundFolder root = countFolderItself(status, false);
        tellEntered(path, root);
        if (Descriptor folder = folders_.open(AT_FDCWD, path.c_str()); folder.isOpen()) {
            folders_.begin(std::move(folder), path.ends_with('/') ? path : path + "/", root);
            readFolder();
        } else {
            leaveUnread();
        }
    }

    /// Everything below the folders of the stack, until none is left.
    void goThrough() {
        while (!folders_.isEmpty() && !isStopped()) {
            if (entriesSinceGiven_ >= entriesBetweenGifts && walk_.exchange.isWanting()) {
                giveFolderAway();
            }
            const std::optional<FolderStack::Opened> opened = folders_.enterNext();
            if (!opened) {
                folders_.leave();
                tellLeft();
                continue;
            }
            tellEntered(opened->name, opened->folder);
            if (opened->isReadable) {
                readFolder();
            } else {
                leaveUnread();
            }
        }
        abandon();
    }

    /// Leaves what a stop left unread.
    void abandon() {
        for (std::size_t level = folders_.count(); level > 0; --level) {
            tellLeft();
        }
        folders_.clear();
    }

    /// Reads the innermost folder. Its folders are kept for later.
    void readFolder() {
        if (looksFirst_) {
            readWhole();
            return;
        }
        for (bool isFirst = true; !isStopped(); isFirst = false) {
            if (!buffer_) {
                buffer_ = newBuffer();
            }
            const std::size_t entryBytes = readEntries(buffer_.get());
            if (entryBytes == 0) {
                return;
            }
            if (isFirst || !walk_.exchange.isWanting() || !givePartAway(entryBytes)) {
                countEntries(buffer_.get(), entryBytes);
            }
        }
    }

    /// The next entries of the innermost folder; none at its end, or when there is no reading on.
    std::size_t readEntries(char* buffer) {
        const ssize_t count = getdents64(folders_.descriptor(), buffer, bufferBytes);
        // A folder removed while it is read simply has no more entries.
        if (count < 0 && errno != ENOENT) {
            miss({});
        }
        return static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }

    /// Reads the innermost folder to its end, and counts what is in it when that is accepted by its names.
    void readWhole() {
        std::vector<char> listed;
        std::vector<std::string_view> names;
        for (std::size_t read = bufferBytes, end = 0; read > 0 && !isStopped(); end += read) {
            listed.resize(end + bufferBytes);
            read = readEntries(listed.data() + end);
            listed.resize(end + read);
        }
        for (std::size_t offset = 0; offset < listed.size();) {
            const dirent64* entry = entryAt(listed.data(), offset);
            offset += entry->d_reclen;
            if (!isSelfOrParent(entry->d_name)) {
                names.emplace_back(entry->d_name);
            }
        }
        if (!isStopped() && collector_->accepts(names)) {
            countEntries(listed.data(), listed.size());
        }
    }

    /// Lets a waiting thread have the outermost folder that is still to be read: mostly the largest piece.
    /// Only now and then: waking a thread for each of a few small folders takes longer than reading them.
    void giveFolderAway() {
        entriesSinceGiven_ = 0;
        std::optional<FolderStack::Given> given = folders_.giveAway();
        if (!given) {
            return;
        }
        walk_.exchange.give({.request = request_,
                             .folder = std::move(given->descriptor),
                             .path = std::move(given->path),
                             .name = std::move(given->name),
                             .found = given->folder,
                             .claim = claimOf(given->level)});
    }

    /// Lets a waiting thread count a part of a large folder, which would otherwise keep one thread busy while
    /// the others have nothing to do. False when there is no descriptor to spare for it.
    bool givePartAway(std::size_t entryBytes) {
        Descriptor again(fcntl(folders_.descriptor(), F_DUPFD_CLOEXEC, 0));
        if (!again.isOpen()) {
            return false;
        }
        walk_.exchange.give({.request = request_,
                             .folder = std::move(again),
                             .path = folders_.path(),
                             .found = folders_.innermost(),
                             .entries = std::move(buffer_),
                             .entryBytes = entryBytes,
                             .claim = claimOf(folders_.count() - 1)});
        return true;
    }

    std::unique_ptr<FolderClaim> claimOf(std::size_t level) {
        return collector_ ? collector_->share(level + levelsAround_) : nullptr;
    }

    void countEntries(const char* buffer, std::size_t bytes) {
        // A slow disk may need milliseconds an entry, and a stop must not wait for a whole buffer.
        constexpr std::int64_t entriesBetweenStopChecks = 32;
        for (std::size_t offset = 0; offset < bytes;) {
            const dirent64* entry = entryAt(buffer, offset);
            offset += entry->d_reclen;
            if (isSelfOrParent(entry->d_name)) {
                continue;
            }
            if (++entriesNotShown_ >= entriesBetweenStopChecks) {
                showProgress();
                if (isStopped()) {
                    return;
                }
            }
            countEntry(entry->d_name);
        }
    }

    void countEntry(const char* name) {
        struct stat status = {};
        if (fstatat(folders_.descriptor(), name, &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0) {
            miss(name);
        } else if (S_ISDIR(status.st_mode)) {
            countFolder(name, status);
        } else {
            const bool isDated = policy_->isDatedFile(name, folders_.innermost().isUndated);
            countOther(name, folders_.path(), status, isDated);
        }
    }

    /// Counts an entry that is no folder.
    void countOther(std::string_view name, std::string_view folder, const struct stat& status, bool isDated) {
        const std::int64_t bytesBefore = tally_.allocatedBytes;
        const Counted counted = tally_.count(status, isDated, counting(), noClones);
        if (collector_) {
            collector_->add({name, folder, status, tally_.allocatedBytes - bytesBefore, counted});
        }
    }

    /// Counts a folder in the innermost one, and keeps it for being read.
    void countFolder(const char* name, const struct stat& status) {
        const FoundFolder& around = folders_.innermost();
        const bool mayBeMount = walk_.mounts.areNamed(name);
        // Only mounts make a folder its own descendant; such a cycle is no entry of its own.
        if (mayBeMount && isAround(status)) {
            return;
        }
        if (policy_->isSetAside(name, [&] { return folders_.path() + name; })) {
            setAside_.push_back(folders_.path() + name);
            return;
        }
        const FoundFolder found = countFolderItself(status, policy_->isUndatedFolder(name, around.isUndated));
        const bool isMount = mayBeMount && walk_.mounts.isAt(folders_.descriptor(), name);
        if (status.st_dev == around.device && !isMount) {
            folders_.note(name, found);
        } else if (collector_) {
            collector_->add({name, folders_.path(), status, found.bytes, Counted::otherEntry});
        }
    }

    FoundFolder countFolderItself(const struct stat& status, bool isUndated) {
        const std::int64_t bytesBefore = tally_.allocatedBytes;
        tally_.count(status, false, counting(), noClones);
        return {status.st_dev, status.st_ino, tally_.allocatedBytes - bytesBefore, isUndated};
    }

    Counting counting() {
        return {.context = walk_.context,
                .linked = walk_.linked,
                .request = request_,
                .kept = walk_.requests[request_].kept != nullptr ? &kept_ : nullptr};
    }

    /// True when the folder with that status is the innermost one or lies around it, within the tree.
    [[nodiscard]] bool isAround(const struct stat& status) const {
        const std::string& path = folders_.path();
        for (std::size_t end = walk_.requests[request_].path.size(); end < path.size();
             end = path.find('/', end + 1)) {
            struct stat above = {};
            if (lstat(path.substr(0, end).c_str(), &above) == 0 && above.st_dev == status.st_dev &&
                above.st_ino == status.st_ino) {
                return true;
            }
        }
        return false;
    }

    void tellEntered(std::string_view name, const FoundFolder& folder) {
        if (collector_) {
            const FileIdentity identity{static_cast<std::int32_t>(folder.device), folder.inode};
            collector_->enter(
                {.name = name, .request = request_, .bytes = folder.bytes, .identity = identity});
        }
    }

    void tellLeft() {
        if (collector_) {
            collector_->leave();
        }
    }

    /// For a folder that was entered but cannot be opened, or not be reached any more.
    void leaveUnread() {
        miss({});
        tellLeft();
    }

    void miss(std::string_view name) {
        ++tally_.unreadableCount;
        if (collector_) {
            collector_->miss(name);
        }
    }

    void showProgress() {
        if (walk_.context.progress != nullptr) {
            walk_.context.progress->entries.fetch_add(entriesNotShown_, std::memory_order_relaxed);
            walk_.context.progress->bytes.fetch_add(tally_.allocatedBytes - shownBytes_,
                                                    std::memory_order_relaxed);
        }
        entriesSinceGiven_ += std::exchange(entriesNotShown_, 0);
        shownBytes_ = tally_.allocatedBytes;
    }

    /// Hands over what the job brought. After a stop it was left in the middle.
    void finish() {
        showProgress();
        walk_.add(request_, tally_, std::exchange(setAside_, {}), std::exchange(kept_, {}));
        tally_ = {};
        shownBytes_ = 0;
    }

    Walk& walk_;
    const std::unique_ptr<WalkCollector> collector_; ///< None when only sums are wanted.
    const bool looksFirst_ = walk_.collection != nullptr && walk_.collection->looksFirst();
    FolderStack folders_;
    Buffer buffer_;

    // Of the job that is being done.
    std::size_t request_ = 0;
    const TreePolicy* policy_ = nullptr;
    std::size_t levelsAround_ =
        0; ///< How many folders the collector was in before the outermost of the stack.
    TreeTally tally_;
    std::vector<std::string> setAside_;
    std::vector<LinkedFile> kept_;
    std::int64_t entriesNotShown_ = 0;
    std::int64_t shownBytes_ = 0;
    std::int64_t entriesSinceGiven_ = 0;
};

void Walk::work() {
    Walker(*this).run();
}

} // namespace

std::vector<TreeSums> walkTrees(std::span<const TreeRequest> requests, const WalkContext& context,
                                WalkCollection* collection) {
    return Walk(requests, context, collection).run();
}

} // namespace lumo::platform
