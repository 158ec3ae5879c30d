#include "Platform/Removal.h"

#include "Platform/FolderStatus.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumo::platform {

namespace {

/// Of the 64 descriptors one is the place's own and up to two are open for a moment on the way into a folder.
constexpr std::size_t mostOpenFolders = 60;
/// How often a name may turn from a folder into something else, or back, before it is given up.
constexpr int mostChangesOfKind = 8;
/// How often one folder is listed because entries were left. File systems that skip entries while others are
/// deleted leave at most half of them each time; a program that keeps writing must not hold us for ever.
constexpr int mostListings = 100;

/// Whether what stands at the place goes, too.
enum class Top { goes, stays };

enum class Rights { asTheyAre, addedWhereOwn };

struct CloseListing {
    void operator()(DIR* listing) const { closedir(listing); }
};
using Listing = std::unique_ptr<DIR, CloseListing>;

struct OpenedFolder {
    Descriptor descriptor;
    FolderStatus status;
};

SystemResult<Descriptor> openForListing(int parent, const char* name) {
    Descriptor folder(untilNotInterrupted(
        [&] { return openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK); }));
    if (!folder.isOpen()) {
        return failed(errno);
    }
    return folder;
}

SystemResult<OpenedFolder> openAsItIs(int parent, const char* name) {
    SystemResult<Descriptor> folder = openForListing(parent, name);
    if (!folder) {
        return std::unexpected(folder.error());
    }
    const SystemResult<FolderStatus> status = statusOf(folder->number());
    if (!status) {
        return std::unexpected(status.error());
    }
    return OpenedFolder{std::move(*folder), *status};
}

/// The same for a folder whose rights may have to be added first. Nothing is added on another mount.
SystemResult<OpenedFolder> openWithOwnerRights(int parent, const char* name, const FolderStatus& onMountOf) {
    const SystemResult<Descriptor> unread = openWithoutRights(parent, name);
    if (!unread) {
        return std::unexpected(unread.error());
    }
    const SystemResult<FolderStatus> status = statusOf(unread->number());
    if (!status) {
        return std::unexpected(status.error());
    }
    if (!status->isOnMountOf(onMountOf)) {
        return failed(EBUSY);
    }
    if (status->owner == geteuid() && (status->mode & S_IRWXU) != S_IRWXU) {
        if (const SystemResult<void> added = addOwnerRights(unread->number(), *status); !added) {
            return std::unexpected(added.error());
        }
    }
    SystemResult<Descriptor> folder = openForListing(unread->number(), ".");
    if (!folder) {
        return std::unexpected(folder.error());
    }
    return OpenedFolder{std::move(*folder), *status};
}

/// A folder on the way from the item to where the removal is.
struct Level {
    std::string name;
    FolderStatus status;
    Listing listing;                ///< None while its descriptor is needed further down.
    std::vector<std::size_t> stuck; ///< Hashes of the names that could not be removed: there may be millions.
    std::size_t stuckBefore = 0;    ///< So many of them, in order, are from earlier listings.
    int listings = 1;
    bool hasBegun = false;   ///< This listing has been read from.
    bool hasRemoved = false; ///< Since this listing began.
    bool hasFailed = false;

    static std::size_t hashOf(std::string_view name) { return std::hash<std::string_view>()(name); }

    [[nodiscard]] bool wasStuck(std::string_view entry) const {
        const auto end = stuck.begin() + static_cast<std::ptrdiff_t>(stuckBefore);
        return stuckBefore > 0 && std::binary_search(stuck.begin(), end, hashOf(entry));
    }

    void remember(std::string_view entry) {
        hasFailed = true;
        stuck.push_back(hashOf(entry));
    }

    void begin() {
        std::ranges::sort(stuck);
        stuckBefore = stuck.size();
        hasBegun = true;
        hasRemoved = false;
    }
};

/// One try at removing everything.
class RemovalPass final {
  public:
    RemovalPass(const Place& place, const FolderStatus& around, Top top, Rights rights,
                std::span<const FolderIdentity> spared)
        : place_(place), around_(around), top_(top), rights_(rights), spared_(spared) {}

    SystemResult<void> run() {
        if (top_ == Top::goes) {
            take(place_.name.c_str(), true);
        } else if (const int code = enterTop(); code != 0) {
            note(code);
        }
        while (!levels_.empty() && !hasLostItsWay_ && !hasMetSpared_) {
            if (const dirent* entry = nextEntry(levels_.back())) {
                // Where the kind is not told, trying it as a folder tells without asking.
                take(entry->d_name, entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN);
            } else {
                leave();
            }
        }
        if (hasMetSpared_) {
            return failed(ECANCELED);
        }
        return firstError_ == 0 ? SystemResult<void>() : failed(firstError_);
    }

    [[nodiscard]] bool hasMetSpared() const { return hasMetSpared_; }

    [[nodiscard]] bool hasFailedOnlyAtMounts() const { return firstError_ != 0 && !hasFailedElsewhere_; }

  private:
    const dirent* nextEntry(Level& level) {
        if (!level.hasBegun) {
            level.begin();
        }
        for (;;) {
            errno = 0;
            const dirent* entry = readdir(level.listing.get());
            if (entry != nullptr) {
                const std::string_view name = entry->d_name;
                if (name != "." && name != ".." && !level.wasStuck(name)) {
                    return entry;
                }
            } else if (errno != EINTR) {
                // A folder that another program has removed has no entries.
                if (errno != 0 && errno != ENOENT) {
                    level.hasFailed = true;
                    note(errno);
                }
                return nullptr;
            }
        }
    }

    /// Enters the folder that stays.
    int enterTop() {
        const int code = enter(place_.name.c_str());
        if (code != ENOTDIR) {
            return code;
        }
        struct stat status = {};
        const bool isLink =
            fstatat(place_.folder.number(), place_.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
            S_ISLNK(status.st_mode);
        return isLink ? ELOOP : 0;
    }

    /// Removes the name from the current folder, or enters it.
    void take(const char* name, bool mayBeFolder) {
        int code = 0;
        for (int change = 0; change < mostChangesOfKind; ++change) {
            code = mayBeFolder ? takeFolder(name) : takeOther(name);
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
        if (!spared_.empty() && isSparedName(name)) {
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
        hasMetSpared_ = hasMetSpared_ || std::ranges::find(spared_, folder) != spared_.end();
        return hasMetSpared_;
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

    int enter(const char* name) {
        while (levels_.size() - firstOpen_ >= mostOpenFolders) {
            closeOldest();
        }
        SystemResult<OpenedFolder> opened = open(name);
        // The rest of the program may have left us fewer descriptors than we would use.
        while (!opened && (opened.error().code == EMFILE || opened.error().code == ENFILE) && closeOldest()) {
            opened = open(name);
        }
        if (!opened) {
            const int code = opened.error().code;
            return code == ENOENT ? 0 : code == ELOOP ? ENOTDIR : code;
        }
        if (isSpared(opened->status.identity())) {
            return ECANCELED;
        }
        if (!opened->status.isOnMountOf(around_)) {
            return EBUSY;
        }
        Level level{.name = name, .status = opened->status};
        if (const int code = list(level, std::move(opened->descriptor)); code != 0) {
            return code;
        }
        levels_.push_back(std::move(level));
        return 0;
    }

    SystemResult<OpenedFolder> open(const char* name) const {
        return rights_ == Rights::asTheyAre ? openAsItIs(currentFolder(), name)
                                            : openWithOwnerRights(currentFolder(), name, around_);
    }

    static int list(Level& level, Descriptor folder) {
        level.listing.reset(fdopendir(folder.number()));
        if (!level.listing) {
            return errno;
        }
        static_cast<void>(folder.release());
        level.hasBegun = false;
        return 0;
    }

    /// Takes the listing from the folder furthest up; false when only the current folder has one.
    bool closeOldest() {
        if (levels_.size() - firstOpen_ <= 1) {
            return false;
        }
        levels_[firstOpen_++].listing.reset();
        return true;
    }

    /// Goes up from a folder whose listing has ended.
    void leave() {
        if (const int code = reopenAbove(); code != 0) {
            note(code);
            hasLostItsWay_ = true;
            return;
        }
        Level level = std::move(levels_.back());
        levels_.pop_back();
        const bool stays = top_ == Top::stays && levels_.empty();
        // One that stays is known to be empty when a listing of it had nothing to remove.
        const int code = level.hasFailed || stays ? ENOTEMPTY : unlinkName(level.name.c_str(), AT_REMOVEDIR);
        const bool isLeft = code == ENOTEMPTY || code == EEXIST;
        if (isLeft && level.hasRemoved && level.listings < mostListings) {
            rewinddir(level.listing.get());
            level.hasBegun = false;
            ++level.listings;
            levels_.push_back(std::move(level));
        } else if (level.hasFailed || stays) {
            rememberStuck(level.name);
        } else if (code == ENOTDIR) {
            take(level.name.c_str(), false);
        } else if (code != 0) {
            note(code);
            rememberStuck(level.name);
        }
    }

    /// Gives the folder above the current one its descriptor back, if it lost it. It is what ".." leads to
    /// unless somebody moved the current folder; then nothing in there is ours to touch.
    int reopenAbove() {
        if (levels_.size() < 2 || levels_[levels_.size() - 2].listing) {
            return 0;
        }
        SystemResult<OpenedFolder> opened = openAsItIs(currentFolder(), "..");
        if (!opened) {
            return opened.error().code;
        }
        Level& above = levels_[levels_.size() - 2];
        if (!opened->status.isSameFolderAs(above.status)) {
            return ESTALE;
        }
        firstOpen_ = levels_.size() - 2;
        return list(above, std::move(opened->descriptor));
    }

    void note(int code) {
        if (firstError_ == 0) {
            firstError_ = code;
        }
        hasFailedElsewhere_ = hasFailedElsewhere_ || code != EBUSY;
    }

    void rememberStuck(std::string_view name) {
        if (!levels_.empty()) {
            levels_.back().remember(name);
        }
    }

    [[nodiscard]] int currentFolder() const {
        return levels_.empty() ? place_.folder.number() : dirfd(levels_.back().listing.get());
    }

    const Place& place_;
    const FolderStatus around_;
    const Top top_;
    const Rights rights_;
    const std::span<const FolderIdentity> spared_;
    std::vector<Level> levels_;
    std::size_t firstOpen_ = 0; ///< This level and all below it have their listing.
    int firstError_ = 0;
    bool hasFailedElsewhere_ = false; ///< Other than at a mount.
    bool hasLostItsWay_ = false;
    bool hasMetSpared_ = false;
};

SystemResult<void> remove(const Place& place, Top top, std::span<const FolderIdentity> spared) {
    const SystemResult<FolderStatus> around = statusOf(place.folder.number());
    if (!around) {
        return std::unexpected(around.error());
    }
    RemovalPass first(place, *around, top, Rights::asTheyAre, spared);
    SystemResult<void> result = first.run();
    if (result || first.hasMetSpared() || first.hasFailedOnlyAtMounts()) {
        return result;
    }
    return RemovalPass(place, *around, top, Rights::addedWhereOwn, spared).run();
}

} // namespace

SystemResult<void> removeTree(const Place& place, std::span<const FolderIdentity> spared) {
    return remove(place, Top::goes, spared);
}

SystemResult<void> removeContents(const Place& place, std::span<const FolderIdentity> spared) {
    return remove(place, Top::stays, spared);
}

} // namespace lumo::platform
