#include "Platform/linux/OpenFolders.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

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
    for (auto folder = upwards.rbegin(); folder != upwards.rend(); ++folder) {
        path += (*folder)->name;
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
    close(folder.descriptor);
    folder.descriptor = -1;
    held_[folder.heldIndex] = held_.back();
    held_[folder.heldIndex]->heldIndex = folder.heldIndex;
    held_.pop_back();
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
        WalkedFolder* shallowest = nullptr;
        for (WalkedFolder* folder : held_) {
            if (folder->pins == 0 && (shallowest == nullptr || folder->depth < shallowest->depth)) {
                shallowest = folder;
            }
        }
        if (shallowest == nullptr) {
            return;
        }
        release(*shallowest);
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
