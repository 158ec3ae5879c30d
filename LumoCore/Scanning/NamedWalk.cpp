#include "LumoCore/Scanning/FileTree.h"
#include "LumoCore/Scanning/NamedTree.h"
#include "LumoCore/Scanning/TreeFiller.h"
#include "Platform/TreeTally.h"
#include "Platform/WalkCollector.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>

// The collectors that list what a walk finds in a named tree.
namespace lumo {

namespace {

using platform::Counted;

std::uint32_t secondsOf(const struct stat& status) {
    const auto since = std::chrono::floor<std::chrono::seconds>(platform::modificationDateOf(status));
    // 0 means unknown.
    return static_cast<std::uint32_t>(
        std::clamp<std::int64_t>(since.time_since_epoch().count(), 1, 0xFFFFFFFF));
}

std::uint8_t traitsOf(const platform::WalkedEntry& entry) {
    if (S_ISDIR(entry.status.st_mode)) {
        // Its contents are not walked: something is mounted there.
        return EntryTraits::folder | EntryTraits::leftOut;
    }
    if (S_ISLNK(entry.status.st_mode)) {
        return EntryTraits::link;
    }
    if (!S_ISREG(entry.status.st_mode)) {
        return EntryTraits::special;
    }
    return 0;
}

struct IndexClaim final : platform::FolderClaim {
    explicit IndexClaim(EntryIndex claimed) : folder(claimed) {}
    const EntryIndex folder;
};

class NamedCollector final : public platform::WalkCollector {
  public:
    NamedCollector(NamedTree& tree, EntryIndex as) : filler_(tree), as_(as) {}

    void add(const platform::WalkedEntry& entry) override {
        EntrySums sums{.bytes = entry.bytes};
        if (S_ISREG(entry.status.st_mode)) {
            sums.modified = secondsOf(entry.status);
        }
        std::optional<SharedFile> shared;
        if (entry.counted == Counted::linkedFile) {
            shared = {.file = platform::identityOf(entry.status),
                      .bytes = platform::bytesOfBlocks(entry.status.st_blocks),
                      .links = static_cast<std::uint32_t>(entry.status.st_nlink)};
        }
        if (filler_.depth() == 0) {
            // The tree is this one entry, which stands already.
            filler_.grow(as_, sums, shared);
            return;
        }
        filler_.add(entry.name, sums, traitsOf(entry), entry.status.st_size, shared);
    }

    void enter(const platform::EnteredFolder& folder) override {
        if (filler_.depth() == 0) {
            filler_.begin(as_, folder.bytes);
        } else {
            filler_.enter(folder.name, {.bytes = folder.bytes});
        }
    }

    void leave() override { filler_.leave(); }

    void miss(std::string_view name) override {
        if (filler_.depth() == 0) {
            filler_.markUnreadable(as_);
        } else if (name.empty()) {
            filler_.markUnreadable();
        } else {
            filler_.add(name, {}, EntryTraits::unreadable, 0);
        }
    }

    std::unique_ptr<platform::FolderClaim> share(std::size_t level) override {
        return std::make_unique<IndexClaim>(filler_.folderAt(level));
    }

    void resume(std::unique_ptr<platform::FolderClaim> claim) override {
        filler_.begin(static_cast<const IndexClaim&>(*claim).folder);
    }

  private:
    TreeFiller filler_;
    const EntryIndex as_;
};

class NamedCollection final : public platform::WalkCollection {
  public:
    NamedCollection(NamedTree& tree, EntryIndex as) : tree_(tree), as_(as) {}

    std::unique_ptr<platform::WalkCollector> collector() override {
        return std::make_unique<NamedCollector>(tree_, as_);
    }

    void settle(platform::FileIdentity file, std::optional<std::int64_t> bytes) override {
        if (!bytes) {
            tree_.waive(file);
        }
    }

  private:
    NamedTree& tree_;
    const EntryIndex as_;
};

} // namespace

std::int64_t measureInto(NamedTree& tree, const std::string& path, EntryIndex as,
                         platform::WalkProgress* progress, const std::stop_token& stop) {
    NamedCollection collection(tree, as);
    HardLinkRegistry registry;
    const platform::WalkContext context = FileTree::contextOf(registry, {.progress = progress, .stop = stop});
    // The root is a folder even where it is spelled as a link to one.
    const std::string walked = as == NamedTree::root && !path.ends_with('/') ? path + "/" : path;
    const platform::TreeRequest request{.path = walked};
    const auto sums = platform::walkTrees({&request, 1}, context, &collection);
    tree.chargeLinked();
    return sums.front().unreadableCount;
}

} // namespace lumo
