#include "Platform/posix/RemovalLevel.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <iterator>
#include <utility>

namespace lumo::platform {

namespace {

std::size_t hashOf(std::string_view name) {
    return std::hash<std::string_view>()(name);
}

SystemResult<Descriptor> openForListing(int parent, const char* name) {
    Descriptor folder(untilNotInterrupted(
        [&] { return openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK); }));
    if (!folder.isOpen()) {
        return failed(errno);
    }
    return folder;
}

} // namespace

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

int RemovalLevel::list(Descriptor folder) {
    listing_.reset(fdopendir(folder.number()));
    if (!listing_) {
        return errno;
    }
    static_cast<void>(folder.release());
    pending_.clear();
    hasBegun_ = false;
    hasEnded_ = false;
    return 0;
}

void RemovalLevel::listAgain() {
    rewinddir(listing_.get());
    hasBegun_ = false;
    hasEnded_ = false;
    ++listings;
}

std::optional<EntryName> RemovalLevel::next(int& failure) {
    failure = 0;
    if (!pending_.empty()) {
        EntryName entry = std::move(pending_.back());
        pending_.pop_back();
        return entry;
    }
    if (listing_ && !hasBegun_) {
        begin();
    }
    while (listing_ && !hasEnded_) {
        errno = 0;
        const dirent* entry = readdir(listing_.get());
        if (entry != nullptr) {
            const std::string_view found = entry->d_name;
            if (found != "." && found != ".." && !wasStuck(found)) {
                return EntryName{std::string(found), entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN};
            }
        } else if (errno != EINTR) {
            // A folder that another program has removed has no entries.
            failure = errno == ENOENT ? 0 : errno;
            hasFailed = hasFailed || failure != 0;
            hasEnded_ = true;
        }
    }
    return std::nullopt;
}

std::vector<EntryName> RemovalLevel::share(std::size_t most, int& failure) {
    failure = 0;
    if (!pending_.empty()) {
        const std::size_t count = std::min(most, (pending_.size() + 1) / 2);
        const auto from = pending_.begin() + static_cast<std::ptrdiff_t>(count);
        std::vector<EntryName> shared(std::make_move_iterator(pending_.begin()),
                                      std::make_move_iterator(from));
        pending_.erase(pending_.begin(), from);
        return shared;
    }
    std::vector<EntryName> shared;
    while (shared.size() < most) {
        std::optional<EntryName> entry = next(failure);
        if (!entry) {
            break;
        }
        shared.push_back(std::move(*entry));
    }
    return shared;
}

void RemovalLevel::remember(std::string_view entry) {
    hasFailed = true;
    stuck_.push_back(hashOf(entry));
}

void RemovalLevel::add(const RemovalPart& part) {
    stuck_.insert(stuck_.end(), part.stuck.begin(), part.stuck.end());
    hasFailed = hasFailed || !part.stuck.empty();
    hasRemoved = hasRemoved || part.hasRemoved;
}

void RemovalLevel::moveResultTo(RemovalPart& part) {
    part.stuck = std::move(stuck_);
    part.hasRemoved = hasRemoved;
}

void RemovalLevel::begin() {
    std::ranges::sort(stuck_);
    stuckBefore_ = stuck_.size();
    hasBegun_ = true;
    hasRemoved = false;
}

bool RemovalLevel::wasStuck(std::string_view entry) const {
    const auto end = stuck_.begin() + static_cast<std::ptrdiff_t>(stuckBefore_);
    return stuckBefore_ > 0 && std::binary_search(stuck_.begin(), end, hashOf(entry));
}

} // namespace lumo::platform
