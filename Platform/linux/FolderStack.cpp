#include "Platform/linux/FolderStack.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>
#include <utility>

namespace lumo::platform {

namespace {

constexpr int readingFolder = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
/// Good for opening what is in a folder; needs no right to read it.
constexpr int reachingFolder = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// Opens a folder, which stays as if nobody had read it where it is the user's own; the system refuses that
/// for those of others.
Descriptor openQuietly(int base, const char* name) {
    Descriptor folder(openat(base, name, readingFolder | O_NOATIME));
    return folder.isOpen() || errno != EPERM ? std::move(folder)
                                             : Descriptor(openat(base, name, readingFolder));
}

bool isThatFolder(int descriptor, const FoundFolder& folder) {
    struct stat status = {};
    return fstat(descriptor, &status) == 0 && status.st_dev == folder.device && status.st_ino == folder.inode;
}

} // namespace

void FolderStack::clear() {
    for (const Level& level : levels_) {
        if (level.descriptor >= 0) {
            close(level.descriptor);
        }
    }
    levels_.clear();
    unopened_.clear();
    unopenedCount_ = 0;
    names_.clear();
}

void FolderStack::begin(Descriptor folder, std::string path, const FoundFolder& found) {
    path_ = std::move(path);
    firstOpen_ = 1;
    push(std::move(folder), found);
}

void FolderStack::push(Descriptor descriptor, const FoundFolder& folder) {
    levels_.push_back({.folder = folder,
                       .descriptor = descriptor.release(),
                       .pathLength = path_.size(),
                       .firstUnopened = unopened_.size(),
                       .nextToGive = unopened_.size(),
                       .firstName = names_.size()});
    closeDownTo(mostOpen_);
}

void FolderStack::closeDownTo(std::size_t most) {
    // The innermost stays whatever happens: its entries are being read.
    while (firstOpen_ + 1 < levels_.size() && levels_.size() - firstOpen_ + 1 > most) {
        if (levels_[firstOpen_].descriptor >= 0) {
            close(std::exchange(levels_[firstOpen_].descriptor, -1));
        }
        ++firstOpen_;
    }
}

void FolderStack::note(std::string_view name, const FoundFolder& folder) {
    unopened_.push_back({folder, names_.size()});
    names_.append(name).push_back('\0');
    ++unopenedCount_;
}

std::size_t FolderStack::endOfUnopened(std::size_t level) const {
    return level + 1 < levels_.size() ? levels_[level + 1].firstUnopened : unopened_.size();
}

std::optional<FolderStack::Opened> FolderStack::enterNext() {
    if (unopened_.size() == levels_.back().nextToGive) {
        return std::nullopt;
    }
    const Unopened next = unopened_.back();
    Opened opened{.name = names_.c_str() + next.name, .folder = next.folder, .isReadable = false};
    unopened_.pop_back();
    --unopenedCount_;
    if (Descriptor descriptor = open(this->descriptor(), opened.name.c_str()); descriptor.isOpen()) {
        opened.isReadable = true;
        path_.append(opened.name).push_back('/');
        push(std::move(descriptor), next.folder);
    }
    return opened;
}

void FolderStack::leave() {
    const Level left = levels_.back();
    const Descriptor below(left.descriptor);
    unopened_.resize(left.firstUnopened);
    names_.resize(left.firstName);
    levels_.pop_back();
    if (levels_.empty()) {
        return;
    }
    path_.resize(levels_.back().pathLength);
    const std::size_t parent = levels_.size() - 1;
    if (parent > 0 && parent < firstOpen_) {
        levels_[parent].descriptor = findAgain(parent, below.number()).release();
        firstOpen_ = parent;
    }
}

Descriptor FolderStack::findAgain(std::size_t level, int below) const {
    // While it is walked a folder may have been moved elsewhere: then its parent is another one.
    Descriptor parent(below >= 0 ? openat(below, "..", reachingFolder) : -1);
    if (parent.isOpen() && isThatFolder(parent.number(), levels_[level].folder)) {
        return parent;
    }
    return descendTo(level);
}

Descriptor FolderStack::descendTo(std::size_t level) const {
    Descriptor reached;
    for (std::size_t next = 1; next <= level; ++next) {
        const std::size_t start = levels_[next - 1].pathLength;
        const std::string name = path_.substr(start, levels_[next].pathLength - start - 1);
        const int base = reached.isOpen() ? reached.number() : levels_.front().descriptor;
        reached = Descriptor(openat(base, name.c_str(), reachingFolder));
        if (!reached.isOpen() || !isThatFolder(reached.number(), levels_[next].folder)) {
            return {};
        }
    }
    return reached;
}

std::optional<FolderStack::Given> FolderStack::giveAway() {
    if (unopenedCount_ < 2) {
        return std::nullopt;
    }
    for (std::size_t level = 0; level < levels_.size(); level = std::max(level + 1, firstOpen_)) {
        Level& holder = levels_[level];
        Descriptor descriptor = openFirstReadable(level);
        if (!descriptor.isOpen()) {
            continue;
        }
        const Unopened& unopened = unopened_[holder.nextToGive++];
        --unopenedCount_;
        std::string name = names_.c_str() + unopened.name;
        std::string path = path_.substr(0, holder.pathLength).append(name).append("/");
        return Given{std::move(descriptor), std::move(path), std::move(name), unopened.folder, level};
    }
    return std::nullopt;
}

Descriptor FolderStack::openFirstReadable(std::size_t level) {
    // What cannot be read is told of when its turn comes, by who is in the folder around it then.
    constexpr std::size_t mostAttempts = 4;
    const Level& holder = levels_[level];
    const std::size_t end = std::min(endOfUnopened(level), holder.nextToGive + mostAttempts);
    for (std::size_t index = holder.nextToGive; index < end && holder.descriptor >= 0; ++index) {
        const char* name = names_.c_str() + unopened_[index].name;
        if (Descriptor folder = openQuietly(holder.descriptor, name); folder.isOpen()) {
            std::swap(unopened_[index], unopened_[holder.nextToGive]);
            return folder;
        }
    }
    return {};
}

Descriptor FolderStack::open(int base, const char* name) {
    constexpr int mostAttempts = 8;
    constexpr int attemptsAtOnce = 3;
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        if (attempt >= attemptsAtOnce) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1 << (attempt - attemptsAtOnce)));
        }
        Descriptor folder = openQuietly(base, name);
        if (folder.isOpen() || (errno != EMFILE && errno != ENFILE)) {
            return folder;
        }
        closeDownTo(2);
    }
    return {};
}

} // namespace lumo::platform
