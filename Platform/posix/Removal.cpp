#include "Platform/Removal.h"

#include "Platform/FolderStatus.h"
#include "Platform/posix/RemovalCrew.h"
#include "Platform/posix/RemovalLevel.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumo::platform {

namespace {

/// How often a name may turn from a folder into something else, or back, before it is given up.
constexpr int mostChangesOfKind = 8;
/// How often one folder is listed because entries were left. File systems that skip entries while others are
/// deleted leave at most half of them each time; a program that keeps writing must not hold us for ever.
constexpr int mostListings = 100;
/// Waking a thread takes longer than removing a few entries.
constexpr std::size_t entriesBetweenParts = 128;
constexpr std::size_t mostEntriesOfPart = 256;

/// Whether what stands at the place goes, too.
enum class Top { goes, stays };

/// What is removed, and how.
struct RemovalTask {
    const Place& place;
    const FolderStatus around;
    const Top top;
    const Rights rights;
    const std::span<const FolderIdentity> spared;
};

/// What one thread does of a try at removing everything.
class RemovalPass final {
  public:
    RemovalPass(const RemovalTask& task, RemovalCrew& crew) : task_(task), crew_(crew) {}
    ~RemovalPass() {
        levels_.clear();
        returnFolders();
    }
    RemovalPass(const RemovalPass&) = delete;
    RemovalPass& operator=(const RemovalPass&) = delete;

    void removePlace() {
        if (task_.top == Top::goes) {
            take(task_.place.name, true);
        } else if (const int code = enterTop(); code != 0) {
            crew_.note(code);
        }
        goThrough();
    }

    void removePart(RemovalPart& part) {
        isPart_ = true;
        firstOpen_ = 1; // The folder around the part's entries is never closed.
        levels_.emplace_back(part);
        goThrough();
        levels_.front().moveResultTo(part);
    }

  private:
    void goThrough() {
        while (!levels_.empty() && !crew_.hasEnded()) {
            if (++entriesSincePart_ >= entriesBetweenParts && crew_.isWanting()) {
                giveEntriesAway();
            }
            int failure = 0;
            if (const std::optional<EntryName> entry = levels_.back().next(failure)) {
                take(entry->name, entry->mayBeFolder);
                continue;
            }
            note(failure);
            if (hasEntriesBack(levels_.back())) {
                continue;
            }
            if (isPart_ && levels_.size() == 1) {
                return;
            }
            leave();
        }
    }

    /// Lets another thread have entries from as far up as possible: there they stand for the largest trees.
    void giveEntriesAway() {
        entriesSincePart_ = 0;
        for (RemovalLevel& level : levels_) {
            if (!level.isOpen()) {
                continue;
            }
            Descriptor folder(fcntl(level.descriptor(), F_DUPFD_CLOEXEC, 0));
            if (!folder.isOpen()) {
                return;
            }
            int failure = 0;
            std::vector<EntryName> entries = level.share(mostEntriesOfPart, failure);
            note(failure);
            if (!entries.empty()) {
                level.parts.push_back(std::make_shared<RemovalPart>(
                    RemovalPart{std::move(folder), level.status, std::move(entries)}));
                crew_.give(level.parts.back());
                return;
            }
        }
    }

    /// Before a folder can go, or be listed anew, what others took of it must be done. True when there is
    /// something that nobody had begun with, to be done here.
    bool hasEntriesBack(RemovalLevel& level) {
        while (!level.parts.empty()) {
            const std::shared_ptr<RemovalPart> part = std::move(level.parts.back());
            level.parts.pop_back();
            if (crew_.takeBack(*part)) {
                level.putBack(std::move(part->entries));
                return true;
            }
            crew_.waitFor(*part);
            level.add(*part);
        }
        return false;
    }

    /// Enters the folder that stays.
    int enterTop() {
        const int code = enter(task_.place.name);
        if (code != ENOTDIR) {
            return code;
        }
        struct stat status = {};
        const bool isLink = fstatat(task_.place.folder.number(), task_.place.name.c_str(), &status,
                                    AT_SYMLINK_NOFOLLOW) == 0 &&
                            S_ISLNK(status.st_mode);
        return isLink ? ELOOP : 0;
    }

    /// Removes the name from the current folder, or enters it.
    void take(const std::string& name, bool mayBeFolder) {
        int code = 0;
        for (int change = 0; change < mostChangesOfKind; ++change) {
            code = mayBeFolder ? takeFolder(name.c_str()) : takeOther(name.c_str());
            if (code != (mayBeFolder ? ENOTDIR : EISDIR)) {
                break;
            }
            mayBeFolder = !mayBeFolder;
        }
        if (code != 0) {
            note(code);
            rememberStuck(name);
        }
    }

    /// 0 when the folder is gone or entered, ENOTDIR when it is none.
    int takeFolder(const char* name) {
        // An empty one would be gone before anybody opens it.
        if (!task_.spared.empty() && isSparedName(name)) {
            return ECANCELED;
        }
        // Goes first because it tells a mount point without touching what is mounted there, and because an
        // empty folder need not be opened.
        const int code = unlinkName(name, AT_REMOVEDIR);
        if (code == 0 || code == ENOTDIR || code == EBUSY || code == EROFS) {
            return code;
        }
        return enter(name);
    }

    bool isSparedName(const char* name) {
        struct stat status = {};
        return fstatat(currentFolder(), name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
               isSpared({.device = status.st_dev, .inode = status.st_ino});
    }

    bool isSpared(const FolderIdentity& folder) {
        const bool isOne = std::ranges::find(task_.spared, folder) != task_.spared.end();
        if (isOne) {
            crew_.endAtSpared();
        }
        return isOne;
    }

    /// 0 when it is gone, EISDIR when it is a folder.
    int takeOther(const char* name) {
        const int code = unlinkName(name, 0);
        if (code != EPERM) {
            return code;
        }
        // Not every system tells a folder from a lack of rights.
        struct stat status = {};
        const int folder = currentFolder();
        const bool isKnown = folder >= 0 && fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0;
        return isKnown && S_ISDIR(status.st_mode) ? EISDIR : code;
    }

    /// 0 when the current folder has no such entry any more.
    int unlinkName(const char* name, int flags) {
        if (untilNotInterrupted([&] { return unlinkat(currentFolder(), name, flags); }) != 0) {
            const bool isMissing = errno == ENOENT || (errno == ENOTDIR && flags == 0);
            if (!isMissing) {
                return errno;
            }
        }
        if (!levels_.empty()) {
            levels_.back().hasRemoved = true;
        }
        return 0;
    }

    int enter(const std::string& name) {
        makeRoom();
        SystemResult<OpenedFolder> opened = open(name.c_str());
        // The rest of the program may have left us fewer descriptors than we would use.
        while (!opened && (opened.error().code == EMFILE || opened.error().code == ENFILE) && closeOldest()) {
            opened = open(name.c_str());
        }
        if (!opened) {
            const int code = opened.error().code;
            return code == ENOENT ? 0 : code == ELOOP ? ENOTDIR : code;
        }
        if (isSpared(opened->status.identity())) {
            return ECANCELED;
        }
        if (!opened->status.isOnMountOf(task_.around)) {
            return EBUSY;
        }
        RemovalLevel level(name, opened->status);
        if (const int code = level.list(std::move(opened->descriptor)); code != 0) {
            return code;
        }
        levels_.push_back(std::move(level));
        return 0;
    }

    SystemResult<OpenedFolder> open(const char* name) const {
        return task_.rights == Rights::asTheyAre ? openAsItIs(currentFolder(), name)
                                                 : openWithOwnerRights(currentFolder(), name, task_.around);
    }

    /// Sees to it that one more folder may be open.
    void makeRoom() {
        while (openFolders() >= RemovalLimits::ownFolders + sharedFolders_) {
            if (crew_.takeFolder()) {
                ++sharedFolders_;
            } else {
                closeOldest();
            }
        }
    }

    void returnFolders() {
        while (sharedFolders_ > 0 && openFolders() < RemovalLimits::ownFolders + sharedFolders_) {
            crew_.returnFolder();
            --sharedFolders_;
        }
    }

    [[nodiscard]] std::size_t openFolders() const {
        return levels_.size() - std::min(firstOpen_, levels_.size());
    }

    /// Closes the folder furthest up; false when only the current one is open.
    bool closeOldest() {
        if (openFolders() <= 1) {
            return false;
        }
        levels_[firstOpen_++].close();
        return true;
    }

    /// Goes up from a folder whose listing has ended.
    void leave() {
        if (const int code = reopenAbove(); code != 0) {
            note(code);
            crew_.end();
            return;
        }
        RemovalLevel level = std::move(levels_.back());
        levels_.pop_back();
        const bool stays = task_.top == Top::stays && levels_.empty();
        // One that stays is known to be empty when a listing of it had nothing to remove.
        const int code = level.hasFailed || stays ? ENOTEMPTY : unlinkName(level.name.c_str(), AT_REMOVEDIR);
        const bool isLeft = code == ENOTEMPTY || code == EEXIST;
        if (isLeft && level.hasRemoved && level.listings < mostListings) {
            level.listAgain();
            levels_.push_back(std::move(level));
        } else if (level.hasFailed || stays) {
            rememberStuck(level.name);
        } else if (code == ENOTDIR) {
            take(level.name, false);
        } else if (code != 0) {
            note(code);
            rememberStuck(level.name);
        }
        returnFolders();
    }

    /// Gives the folder above the current one its descriptor back, if it lost it. It is what ".." leads to
    /// unless somebody moved the current folder; then nothing in there is ours to touch.
    int reopenAbove() {
        if (levels_.size() < 2 || levels_[levels_.size() - 2].isOpen()) {
            return 0;
        }
        SystemResult<OpenedFolder> opened = openAsItIs(currentFolder(), "..");
        if (!opened) {
            return opened.error().code;
        }
        RemovalLevel& above = levels_[levels_.size() - 2];
        if (!opened->status.isSameFolderAs(above.status)) {
            return ESTALE;
        }
        firstOpen_ = levels_.size() - 2;
        while (hasEntriesBack(above)) {
            // The listing begins anew and holds them as well.
        }
        return above.list(std::move(opened->descriptor));
    }

    void note(int code) {
        if (code != 0) {
            crew_.note(code);
        }
    }

    void rememberStuck(std::string_view name) {
        if (!levels_.empty()) {
            levels_.back().remember(name);
        }
    }

    [[nodiscard]] int currentFolder() const {
        return levels_.empty() ? task_.place.folder.number() : levels_.back().descriptor();
    }

    const RemovalTask& task_;
    RemovalCrew& crew_;
    bool isPart_ = false;
    std::vector<RemovalLevel> levels_;
    std::size_t firstOpen_ = 0;     ///< This level and all below it are open.
    std::size_t sharedFolders_ = 0; ///< So many more than its own this thread may have open.
    std::size_t entriesSincePart_ = 0;
};

struct TryOutcome {
    SystemResult<void> result;
    bool maySucceedWithRights = false;
};

/// One try at removing everything.
TryOutcome tryOnce(const RemovalTask& task, const RemovalLimits& limits) {
    RemovalCrew crew(limits, [&](RemovalPart& part) { RemovalPass(task, crew).removePart(part); });
    RemovalPass(task, crew).removePlace();
    crew.join();
    if (crew.hasMetSpared()) {
        return {failed(ECANCELED)};
    }
    if (const int code = crew.firstError(); code != 0) {
        return {failed(code), crew.hasFailedElsewhere()};
    }
    return {};
}

SystemResult<void> remove(const Place& place, Top top, std::span<const FolderIdentity> spared) {
    const SystemResult<FolderStatus> around = statusOf(place.folder.number());
    if (!around) {
        return std::unexpected(around.error());
    }
    const TryOutcome first =
        tryOnce({place, *around, top, Rights::asTheyAre, spared}, RemovalLimits::ofThisProcess());
    if (!first.maySucceedWithRights) {
        return first.result;
    }
    // What is left is little, and one thread gets along with few descriptors.
    return tryOnce({place, *around, top, Rights::addedWhereOwn, spared}, RemovalLimits::ofOneThread()).result;
}

} // namespace

SystemResult<void> removeTree(const Place& place, std::span<const FolderIdentity> spared) {
    return remove(place, Top::goes, spared);
}

SystemResult<void> removeContents(const Place& place, std::span<const FolderIdentity> spared) {
    return remove(place, Top::stays, spared);
}

} // namespace lumo::platform
