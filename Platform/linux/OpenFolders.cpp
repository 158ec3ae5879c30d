#include "Platform/linux/OpenFolders.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <ranges>
#include <utility>

namespace lumo::platform {

namespace {

/// While a deep folder is reopened every 64th folder on the way keeps its descriptor, so that going back up a
/// tree of n levels costs about 64 n opens and not n * n.
constexpr std::uint32_t levelsBetweenStations = 64;
constexpr std::size_t mostStations = 8;

bool isSameFolder(int descriptor, const WalkedFolder& folder) {
    struct stat status = {};
    return fstat(descriptor, &status) == 0 && status.st_dev == folder.device && status.st_ino == folder.inode;
}

} // namespace

bool WalkedFolder::isWithin(dev_t otherDevice, ino_t otherInode) const {
    for (const WalkedFolder* folder = this; folder != nullptr; folder = folder->parent) {
        if (folder->inode == otherInode && folder->device == otherDevice) {
            return true;
        }
    }
    return false;
}

std::string WalkedFolder::pathOf(const char* entry) const {
    std::vector<const WalkedFolder*> upwards;
    for (const WalkedFolder* folder = this; folder != nullptr; folder = folder->parent) {
        upwards.push_back(folder);
    }
    std::string path;
    for (const WalkedFolder* folder : std::views::reverse(upwards)) {
        path += folder->name;
        if (!path.ends_with('/')) {
            path += '/';
        }
    }
    return path + entry;
}

OpenFolders::~OpenFolders() {
    for (const WalkedFolder* folder : held_) {
        close(folder->descriptor);
    }
    for (const int descriptor : released_) {
        close(descriptor);
    }
}

void OpenFolders::hold(WalkedFolder& folder, int descriptor) {
    folder.descriptor = descriptor;
    folder.heldIndex = held_.size();
    held_.push_back(&folder);
    evictBeyondBudget();
}

int OpenFolders::pin(WalkedFolder& folder, Lock& lock) {
    if (folder.descriptor < 0) {
        return reopen(folder, lock);
    }
    ++folder.pins;
    return folder.descriptor;
}

void OpenFolders::unpin(WalkedFolder& folder) {
    --folder.pins;
}

void OpenFolders::release(WalkedFolder& folder) {
    if (folder.descriptor < 0) {
        return;
    }
    released_.push_back(folder.descriptor);
    folder.descriptor = -1;
    held_[folder.heldIndex] = held_.back();
    held_[folder.heldIndex]->heldIndex = folder.heldIndex;
    held_.pop_back();
}

std::vector<int> OpenFolders::takeReleased() {
    return std::exchange(released_, {});
}

void OpenFolders::releaseUnused() {
    const std::vector<WalkedFolder*> held = held_;
    for (WalkedFolder* folder : held) {
        if (folder->pins == 0) {
            release(*folder);
        }
    }
}

void OpenFolders::evictBeyondBudget() {
    while (held_.size() > budget_) {
        std::vector<WalkedFolder*> idle;
        std::ranges::copy_if(held_, std::back_inserter(idle),
                             [](const WalkedFolder* folder) { return folder->pins == 0; });
        if (idle.empty()) {
            return;
        }
        std::ranges::sort(idle, {}, &WalkedFolder::depth);
        // The deeper half is needed soon. Of the others the one goes that leaves the smallest gap, so that
        // what stays is spread over the depth and every folder has an open ancestor not too far above it.
        std::size_t leastMissed = 0;
        std::uint32_t smallestGap = UINT32_MAX;
        for (std::size_t index = 0; index < std::max<std::size_t>(idle.size() / 2, 1); ++index) {
            const std::uint32_t above = index > 0 ? idle[index - 1]->depth : 0;
            const std::uint32_t gap = idle[std::min(index + 1, idle.size() - 1)]->depth - above;
            if (gap < smallestGap) {
                smallestGap = gap;
                leastMissed = index;
            }
        }
        release(*idle[leastMissed]);
    }
}

int OpenFolders::reopen(WalkedFolder& folder, Lock& lock) {
    lock.unlock();
    const std::lock_guard<std::mutex> oneAtATime(reopening_);
    lock.lock();
    std::vector<WalkedFolder*> upwards;
    WalkedFolder* open = &folder;
    while (open != nullptr && open->descriptor < 0) {
        upwards.push_back(open);
        open = open->parent;
    }
    if (open != nullptr) {
        ++open->pins;
    }
    if (!upwards.empty()) {
        const int base = open != nullptr ? open->descriptor : AT_FDCWD;
        lock.unlock();
        const std::vector<Opened> opened = descend(upwards, base);
        lock.lock();
        for (const Opened& station : opened) {
            // Pinned first: holding the next one may evict.
            if (station.folder == &folder) {
                ++folder.pins;
            }
            hold(*station.folder, station.descriptor);
        }
    } else {
        ++folder.pins;
    }
    if (open != nullptr) {
        unpin(*open);
    }
    return folder.descriptor;
}

std::vector<OpenFolders::Opened> OpenFolders::descend(const std::vector<WalkedFolder*>& upwards, int base) {
    std::vector<Opened> stations; // The deepest is last.
    int current = base;
    const auto closeAll = [&] {
        for (const Opened& station : stations) {
            close(station.descriptor);
        }
        stations.clear();
    };
    for (auto next = upwards.rbegin(); next != upwards.rend(); ++next) {
        const int descriptor =
            openat(current, (*next)->name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        const bool isPassedThrough =
            current != base && (stations.empty() || stations.back().descriptor != current);
        if (isPassedThrough) {
            close(current);
        }
        if (descriptor < 0 || !isSameFolder(descriptor, **next)) {
            if (descriptor >= 0) {
                close(descriptor);
            }
            closeAll();
            return {};
        }
        current = descriptor;
        const bool isTarget = std::next(next) == upwards.rend();
        if (isTarget || (*next)->depth % levelsBetweenStations == 0) {
            stations.push_back({*next, descriptor});
        }
        if (stations.size() > mostStations) {
            close(stations.front().descriptor);
            stations.erase(stations.begin());
        }
    }
    return stations;
}

} // namespace lumo::platform
