#include "Platform/FileSearch.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/AnnotatedMutex.h"
#include "Platform/WalkCollector.h"

#include <algorithm>
#include <climits>
#include <memory>
#include <set>
#include <utility>

namespace lumo::platform {

namespace {

/// What the collectors of one search share.
class Search final : public WalkCollection {
  public:
    explicit Search(const FileSearch& asked) : asked_(asked) {}

    std::unique_ptr<WalkCollector> collector() override;
    [[nodiscard]] bool looksFirst() const override { return asked_.refuses || asked_.roots.size() > 1; }
    void settle(FileIdentity /*file*/, std::optional<std::int64_t> /*bytes*/) override {}

    [[nodiscard]] std::int64_t minimumBytes() const { return asked_.minimumBytes; }

    /// Whether the folder counts: by the names in it, unless it is a root, and only once where several roots
    /// lead to it.
    bool counts(FileIdentity folder, bool isRoot, std::span<const std::string_view> names) {
        if (!isRoot && asked_.refuses && asked_.refuses(names)) {
            return false;
        }
        if (asked_.roots.size() == 1) {
            return true; // Without links there is one way to each folder.
        }
        const Locked locked(mutex_);
        return visited_.emplace(folder.device, folder.object).second;
    }

    struct File {
        std::string name;
        std::int64_t bytes = 0;
        std::uint64_t object = 0;
    };
    void add(std::string folder, std::int32_t device, std::span<const File> files) {
        const Locked locked(mutex_);
        const std::uint32_t number = found_.addFolder(std::move(folder), device);
        for (const File& file : files) {
            found_.addFile(number, file.name, file.bytes, file.object);
        }
    }

    void missFolder(const std::string& path) {
        constexpr std::size_t mostNamed = 20;
        const Locked locked(mutex_);
        ++found_.unreadableCount;
        if (!path.empty() && found_.unlisted.size() < mostNamed) {
            found_.unlisted.push_back(path);
        }
    }

    FilesFound take() {
        const Locked locked(mutex_);
        std::ranges::sort(found_.unlisted);
        return std::move(found_);
    }

  private:
    const FileSearch& asked_;
    AnnotatedMutex mutex_;
    FilesFound found_ LUMO_GUARDED_BY(mutex_);
    std::set<std::pair<std::int32_t, std::uint64_t>> visited_ LUMO_GUARDED_BY(mutex_);
};

/// Of a folder that another thread goes on with, where it is.
struct ClaimedPath final : FolderClaim {
    explicit ClaimedPath(std::string_view where) : path(where) {}
    std::string path;
};

/// Keeps the files of the folder that is being told of, since a folder is told of as a whole.
class SearchCollector final : public WalkCollector {
  public:
    explicit SearchCollector(Search& search) : search_(search) {}
    ~SearchCollector() override { handOver(); }

    void add(const WalkedEntry& entry) override {
        const std::size_t pathBytes = entry.folder.size() + entry.name.size();
        if (!S_ISREG(entry.status.st_mode) || entry.status.st_size < search_.minimumBytes() ||
            pathBytes >= PATH_MAX) {
            return;
        }
        if (entry.folder != folder_) {
            handOver();
            folder_ = entry.folder;
            device_ = static_cast<std::int32_t>(entry.status.st_dev);
        }
        files_.push_back({std::string(entry.name), entry.status.st_size, entry.status.st_ino});
    }

    void enter(const EnteredFolder& folder) override {
        begins_.push_back(path_.size());
        path_ += path_.empty() || path_.ends_with('/') ? "" : "/";
        path_ += folder.name;
        entered_ = folder.identity;
    }

    bool accepts(std::span<const std::string_view> names) override {
        return search_.counts(entered_, begins_.size() == 1, names);
    }

    void leave() override {
        path_.resize(begins_.back());
        begins_.pop_back();
    }

    void miss(std::string_view name) override {
        if (name.empty()) {
            search_.missFolder(path_);
        }
    }

    std::unique_ptr<FolderClaim> share(std::size_t level) override {
        const std::size_t end = level + 1 < begins_.size() ? begins_[level + 1] : path_.size();
        return std::make_unique<ClaimedPath>(std::string_view(path_).substr(0, end));
    }
    void resume(std::unique_ptr<FolderClaim> claim) override {
        begins_.push_back(path_.size());
        path_ = std::move(static_cast<ClaimedPath&>(*claim).path); // Made by `share`.
    }

  private:
    void handOver() {
        if (!files_.empty()) {
            search_.add(folder_.substr(0, folder_.size() - 1), device_, files_);
            files_.clear();
        }
    }

    Search& search_;
    std::string path_; ///< Of the innermost folder.
    /// How long the path was before each entered folder: one in a root, and in a folder that another thread
    /// shared, whose turn is over.
    std::vector<std::size_t> begins_;
    FileIdentity entered_ = {};
    std::string folder_; ///< Ends with a slash.
    std::int32_t device_ = 0;
    std::vector<Search::File> files_;
};

std::unique_ptr<WalkCollector> Search::collector() {
    return std::make_unique<SearchCollector>(*this);
}

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

FilesFound searchFiles(const FileSearch& asked, WalkProgress* progress, const std::stop_token& stop) {
    TreePolicy policy;
    if (asked.enters) {
        policy.setsAside = [](std::string_view) { return true; };
        // No call takes a longer path: what lies there could be named, and nothing be done about it.
        policy.walksAllTheSame = [&](const std::string& path) {
            return path.size() < PATH_MAX && asked.enters(path, fileName(path));
        };
    }
    // A root may be a link, as a home on another disk is.
    std::vector<std::string> roots = asked.roots;
    std::vector<TreeRequest> requests;
    for (std::string& root : roots) {
        root += root.ends_with('/') ? "" : "/";
        requests.push_back({.path = root, .policy = &policy});
    }
    const auto claim = [](FileIdentity) { return true; };
    Search search(asked);
    walkTrees(requests, {.claimLink = claim, .claimClone = claim, .progress = progress, .stop = stop},
              &search);
    return search.take();
}

} // namespace lumo::platform
