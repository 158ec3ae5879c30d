#include "Platform/FileSearch.h"

#include "Platform/Descriptor.h"
#include "Platform/MountPoints.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

namespace lumo::platform {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

/// A folder that waits to be searched.
struct Waiting {
    std::string path;
    dev_t device = 0; ///< Of its root.
    bool isRoot = false;
};

/// What one folder holds.
struct Contents {
    struct File {
        std::string name;
        std::int64_t bytes = 0;
        std::uint64_t object = 0;
    };
    std::vector<File> files;
    std::vector<std::string> folders;
    std::vector<std::string> names; ///< Of all entries.
};

/// The folder, opened so that its times stay as they are where the system lets us. A root may be a link, as a
/// home on another disk is.
OpenFolder openQuietly(const std::string& path, bool isRoot) {
    const int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | (isRoot ? 0 : O_NOFOLLOW);
#ifdef O_NOATIME
    int descriptor = open(path.c_str(), flags | O_NOATIME);
    if (descriptor < 0 && errno == EPERM) {
        descriptor = open(path.c_str(), flags);
    }
#else
    const int descriptor = open(path.c_str(), flags);
#endif
    return OpenFolder(descriptor < 0 ? nullptr : fdopendir(descriptor));
}

/// The threads of one search and what they share.
class Search final {
  public:
    Search(const FileSearch& asked, WalkProgress* progress, const std::stop_token& stop)
        : asked_(asked), progress_(progress), stop_(stop), mounts_(MountPoints::ofThisProcess()) {
        for (const std::string& root : asked.roots) {
            waiting_.push_back({.path = root, .isRoot = true});
        }
    }

    FilesFound run() {
        const std::size_t count =
            std::clamp<std::size_t>(std::size_t{2} * std::thread::hardware_concurrency(), 2, 8);
        std::vector<std::jthread> threads;
        try {
            while (threads.size() + 1 < count) {
                threads.emplace_back([this] { work(); });
            }
        } catch (const std::system_error&) {
            // The system allows no more threads; those that run do the work.
        }
        work();
        threads.clear();
        return std::move(found_);
    }

  private:
    void work() {
        std::unique_lock lock(mutex_);
        for (;;) {
            wakes_.wait(lock, [this] { return !waiting_.empty() || busy_ == 0; });
            if (waiting_.empty() || stop_.stop_requested()) {
                waiting_.clear();
                wakes_.notify_all();
                return;
            }
            // The last one first: so few wait at any time.
            Waiting folder = std::move(waiting_.back());
            waiting_.pop_back();
            ++busy_;
            lock.unlock();
            std::optional<Contents> contents = contentsOf(folder);
            lock.lock();
            --busy_;
            take(folder, std::move(contents));
            wakes_.notify_all();
        }
    }

    /// Absent for a folder that could not be listed; empty for one that does not count.
    std::optional<Contents> contentsOf(Waiting& folder) {
        const OpenFolder opened = openQuietly(folder.path, folder.isRoot);
        struct stat status = {};
        if (!opened || fstat(dirfd(opened.get()), &status) != 0) {
            return errno == ENOENT ? std::optional(Contents()) : std::nullopt;
        }
        if (folder.isRoot) {
            folder.device = status.st_dev;
        }
        if (status.st_dev != folder.device || !isFirstVisit(status)) {
            return Contents();
        }
        Contents contents;
        while (const dirent* entry = readdir(opened.get())) {
            add(entry, folder, dirfd(opened.get()), contents);
        }
        if (!folder.isRoot && asked_.refuses) {
            const std::vector<std::string_view> names(contents.names.begin(), contents.names.end());
            return asked_.refuses(names) ? Contents() : std::move(contents);
        }
        return contents;
    }

    void add(const dirent* entry, const Waiting& folder, int descriptor, Contents& contents) {
        const char* name = entry->d_name;
        if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0) {
            return;
        }
        if (progress_ != nullptr) {
            ++progress_->entries;
        }
        if (asked_.refuses) {
            contents.names.emplace_back(name);
        }
        struct stat status = {};
        const bool mayBeFile = entry->d_type == DT_REG || entry->d_type == DT_UNKNOWN;
        if (mayBeFile && fstatat(descriptor, name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
            return;
        }
        if (mayBeFile && S_ISREG(status.st_mode)) {
            if (status.st_size >= asked_.minimumBytes) {
                contents.files.push_back({name, status.st_size, status.st_ino});
            }
        } else if (entry->d_type == DT_DIR || (mayBeFile && S_ISDIR(status.st_mode))) {
            if (!mounts_.isAt(descriptor, name) &&
                (!asked_.enters || asked_.enters(folder.path + "/" + name, name))) {
                contents.folders.emplace_back(name);
            }
        }
    }

    bool isFirstVisit(const struct stat& status) {
        if (asked_.roots.size() == 1) {
            return true; // Without links there is one way to each folder.
        }
        const std::lock_guard lock(visitedMutex_);
        return visited_.emplace(status.st_dev, status.st_ino).second;
    }

    void take(const Waiting& folder, std::optional<Contents> contents) {
        if (!contents) {
            ++found_.unreadableCount;
            return;
        }
        if (!contents->files.empty()) {
            const std::uint32_t number =
                found_.addFolder(folder.path, static_cast<std::int32_t>(folder.device));
            for (const Contents::File& file : contents->files) {
                found_.addFile(number, file.name, file.bytes, file.object);
            }
        }
        for (const std::string& name : contents->folders) {
            waiting_.push_back({.path = folder.path + "/" + name, .device = folder.device});
        }
    }

    const FileSearch& asked_;
    WalkProgress* progress_;
    const std::stop_token& stop_;
    MountPoints mounts_;
    std::mutex mutex_; ///< Guards what follows, up to the next one.
    std::condition_variable wakes_;
    std::vector<Waiting> waiting_;
    int busy_ = 0; ///< Threads that may still find folders.
    FilesFound found_;
    std::mutex visitedMutex_; ///< Guards the folders that several roots may lead to.
    std::set<std::pair<dev_t, ino_t>> visited_;
};

} // namespace

std::string FilesFound::pathOf(const File& file) const {
    return folders_[file.folder].path + "/" + (names_.c_str() + file.name);
}

bool FilesFound::isSame(const File& left, const File& right) const {
    return left.object == right.object && folders_[left.folder].device == folders_[right.folder].device;
}

std::uint32_t FilesFound::addFolder(std::string path, std::int32_t device) {
    folders_.push_back({std::move(path), device});
    return static_cast<std::uint32_t>(folders_.size() - 1);
}

void FilesFound::addFile(std::uint32_t folder, std::string_view name, std::int64_t bytes,
                         std::uint64_t object) {
    constexpr std::size_t mostNames = UINT32_MAX;
    if (names_.size() + name.size() + 1 > mostNames) {
        return; // Some hundred million files: whoever has them looks at fewer folders.
    }
    files_.push_back({bytes, object, folder, static_cast<std::uint32_t>(names_.size())});
    names_.append(name).push_back('\0');
}

FilesFound searchFiles(const FileSearch& search, WalkProgress* progress, const std::stop_token& stop) {
    return Search(search, progress, stop).run();
}

} // namespace lumo::platform
