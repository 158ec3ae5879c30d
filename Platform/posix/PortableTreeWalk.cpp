#include "LumoCore/Basics/Path.h"
#include "Platform/CloneIdentity.h"
#include "Platform/MountPoints.h"
#include "Platform/TreeTally.h"
#include "Platform/TreeWalk.h"
#include "Platform/WalkCollector.h"

#include <fcntl.h>
#include <fts.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace lumo::platform {

namespace {

struct CloseWalk {
    void operator()(FTS* walk) const { fts_close(walk); }
};

/// What the trees of one walk share.
struct Shared {
    const WalkContext& context;
    WalkCollector* collector; ///< None when only sums are wanted.
    bool looksFirst;
    MountPoints mounts = MountPoints::ofThisProcess();
    LinkedFiles linked = {};
};

/// One tree being walked. A folder's `fts_number` is 1 when the files below it are undated.
class PortableWalk {
  public:
    PortableWalk(const TreeRequest& request, std::size_t index, Shared& shared)
        : request_(request), policy_(*request.policy), shared_(shared), context_(shared.context),
          counting_{.context = shared.context,
                    .linked = shared.linked,
                    .request = index,
                    .kept = request.kept != nullptr ? &kept_ : nullptr} {}

    TreeSums run() {
        // fts takes mutable strings although it copies them.
        std::string path(request_.path);
        char* roots[] = {path.data(), nullptr};
        const std::unique_ptr<FTS, CloseWalk> walk(
            fts_open(roots, FTS_PHYSICAL | FTS_NOCHDIR | FTS_XDEV, nullptr));
        if (!walk) {
            return {};
        }
        while (FTSENT* entry = fts_read(walk.get())) {
            if (context_.stop.stop_requested()) {
                break;
            }
            visit(walk.get(), entry);
        }
        leaveTo(0);
        tally_.addTo(sums_);
        std::ranges::sort(sums_.setAside);
        if (request_.kept != nullptr) {
            keepPart(*request_.kept, tally_, std::move(kept_));
        }
        return std::move(sums_);
    }

  private:
    void visit(FTS* walk, FTSENT* entry) {
        switch (entry->fts_info) {
        case FTS_D:
            visitFolder(walk, entry);
            break;
        case FTS_F:
        case FTS_DEFAULT:
        case FTS_SL:
        case FTS_SLNONE:
            count(*entry, false);
            break;
        case FTS_DNR:
        case FTS_ERR:
        case FTS_NS:
            miss(*entry);
            break;
        default:
            break;
        }
    }

    void visitFolder(FTS* walk, FTSENT* entry) {
        const std::string_view name(entry->fts_name, entry->fts_namelen);
        const bool isRoot = entry->fts_level == FTS_ROOTLEVEL;
        if (!isRoot) {
            const std::string_view path(entry->fts_path, entry->fts_pathlen);
            if (policy_.isSetAside(name, [&] { return std::string(path); })) {
                sums_.setAside.emplace_back(path);
                fts_set(walk, entry, FTS_SKIP);
                return;
            }
            entry->fts_number = policy_.isUndatedFolder(name, isInUndatedFolder(*entry)) ? 1 : 0;
        }
        const bool isMount = !isRoot && shared_.mounts.isAt(AT_FDCWD, entry->fts_accpath);
        // The walk itself does not go on to another volume.
        const bool isEntered = !isMount && (isRoot || entry->fts_statp->st_dev == device_);
        device_ = isRoot ? entry->fts_statp->st_dev : device_;
        count(*entry, isEntered);
        if (isMount || (isEntered && shared_.looksFirst && !isAccepted(walk))) {
            fts_set(walk, entry, FTS_SKIP);
        }
    }

    /// Asks the collector about the folder that the walk has come to.
    bool isAccepted(FTS* walk) {
        std::vector<std::string_view> names;
        for (const FTSENT* child = fts_children(walk, 0); child != nullptr; child = child->fts_link) {
            names.emplace_back(child->fts_name, child->fts_namelen);
        }
        return shared_.collector->accepts(names);
    }

    static bool isInUndatedFolder(const FTSENT& entry) {
        return entry.fts_level > FTS_ROOTLEVEL && entry.fts_parent->fts_number != 0;
    }

    void count(const FTSENT& entry, bool isEntered) {
        const struct stat& status = *entry.fts_statp;
        const bool isDated =
            policy_.isDatedFile({entry.fts_name, entry.fts_namelen}, isInUndatedFolder(entry));
        const std::int64_t before = tally_.allocatedBytes;
        const Counted counted = tally_.count(status, isDated, counting_, [&] {
            return cloneFamily(entry.fts_accpath, identityOf(status).device);
        });
        const std::int64_t bytes = tally_.allocatedBytes - before;
        if (shared_.collector != nullptr) {
            tell(entry, bytes, counted, isEntered);
        }
        if (context_.progress != nullptr) {
            context_.progress->entries.fetch_add(1, std::memory_order_relaxed);
            context_.progress->bytes.fetch_add(bytes, std::memory_order_relaxed);
        }
    }

    void tell(const FTSENT& entry, std::int64_t bytes, Counted counted, bool isEntered) {
        const std::string_view name(entry.fts_name, entry.fts_namelen);
        const std::string_view path(entry.fts_path, entry.fts_pathlen);
        leaveTo(static_cast<std::size_t>(entry.fts_level));
        if (isEntered) {
            shared_.collector->enter({entry.fts_level == FTS_ROOTLEVEL ? path : name, counting_.request,
                                      bytes, identityOf(*entry.fts_statp)});
            ++entered_;
        } else {
            const std::string_view folder = path.substr(0, path.size() - fileName(path).size());
            shared_.collector->add({name, folder, *entry.fts_statp, bytes, counted});
        }
    }

    void miss(const FTSENT& entry) {
        ++tally_.unreadableCount;
        if (shared_.collector == nullptr) {
            return;
        }
        const std::string_view name(entry.fts_name, entry.fts_namelen);
        const std::string_view path(entry.fts_path, entry.fts_pathlen);
        const bool isRoot = entry.fts_level == FTS_ROOTLEVEL;
        // A folder that cannot be read was met as one before.
        const bool isEntered = entry.fts_info == FTS_DNR;
        leaveTo(static_cast<std::size_t>(entry.fts_level) + (isEntered ? 1 : 0));
        shared_.collector->miss(isEntered ? std::string_view() : isRoot ? path : name);
    }

    /// Leaves the folders that do not lie around an entry of that level; the walk has read all of them.
    void leaveTo(std::size_t level) {
        for (; entered_ > level; --entered_) {
            shared_.collector->leave();
        }
    }

    const TreeRequest& request_;
    const TreePolicy& policy_;
    Shared& shared_;
    const WalkContext& context_;
    const Counting counting_;
    std::vector<LinkedFile> kept_;
    TreeTally tally_;
    TreeSums sums_;
    dev_t device_ = 0;        ///< Of the root.
    std::size_t entered_ = 0; ///< Folders that the collector is in.
};

} // namespace

std::vector<TreeSums> walkTreesPortably(std::span<const TreeRequest> requests, const WalkContext& context,
                                        WalkCollection* collection) {
    std::vector<TreeSums> sums(requests.size());
    std::unique_ptr<WalkCollector> collector = collection != nullptr ? collection->collector() : nullptr;
    Shared shared{.context = context,
                  .collector = collector.get(),
                  .looksFirst = collection != nullptr && collection->looksFirst()};
    countKnown(requests, sums, shared.linked);
    for (std::size_t index = 0; index < requests.size(); ++index) {
        if (requests[index].known == nullptr) {
            sums[index] = PortableWalk(requests[index], index, shared).run();
        }
    }
    keepTrees(requests, sums);
    collector.reset();
    shared.linked.settle(sums, context, [&](FileIdentity file, std::optional<std::int64_t> bytes) {
        if (collection != nullptr) {
            collection->settle(file, bytes);
        }
    });
    return sums;
}

} // namespace lumo::platform
