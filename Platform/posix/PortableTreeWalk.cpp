#include "Platform/BreakdownTally.h"
#include "Platform/CloneIdentity.h"
#include "Platform/MountPoints.h"
#include "Platform/TreeTally.h"
#include "Platform/TreeWalk.h"

#include <fcntl.h>
#include <fts.h>

#include <algorithm>
#include <memory>

namespace lumo::platform {

namespace {

struct CloseWalk {
    void operator()(FTS* walk) const { fts_close(walk); }
};

bool holds(const std::vector<std::string>& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

/// What the trees of one walk share.
struct Shared {
    const WalkContext& context;
    MountPoints mounts = MountPoints::ofThisProcess();
    LinkedFiles linked = {};
};

/// One tree being walked. A folder's `fts_number` is 1 when the files below it are undated.
class PortableWalk {
  public:
    /// Breaks the tree down within the limits, where there are any.
    PortableWalk(const TreeRequest& request, std::size_t index, Shared& shared,
                 const BreakdownLimits* limits = nullptr)
        : request_(request), policy_(*request.policy), shared_(shared), context_(shared.context),
          counting_{shared.context, shared.linked, index}, limits_(limits) {}

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
        tally_.addTo(sums_);
        std::ranges::sort(sums_.setAside);
        return std::move(sums_);
    }

    TreeBreakdown runBreakdown() {
        std::vector<TreeSums> sums{run()};
        endParts(1);
        shared_.linked.settle(sums, context_, [&](FileIdentity file, std::optional<std::int64_t> bytes) {
            linkedParts_.settle(file, bytes, extensions_);
        });
        TreeBreakdown breakdown;
        breakdown.sums = std::move(sums.front());
        if (!open_.empty()) {
            breakdown.parts = open_.front()->take();
        }
        extensions_.addTo(breakdown);
        return breakdown;
    }

  private:
    void visit(FTS* walk, FTSENT* entry) {
        switch (entry->fts_info) {
        case FTS_D:
            enter(walk, entry);
            break;
        case FTS_F:
        case FTS_DEFAULT:
        case FTS_SL:
        case FTS_SLNONE:
            count(*entry);
            break;
        case FTS_DNR:
        case FTS_ERR:
        case FTS_NS:
            ++tally_.unreadableCount;
            break;
        default:
            break;
        }
    }

    void enter(FTS* walk, FTSENT* entry) {
        const std::string_view name(entry->fts_name, entry->fts_namelen);
        if (entry->fts_level > FTS_ROOTLEVEL) {
            if (isSetAside(policy_, name, [&] { return std::string(entry->fts_path, entry->fts_pathlen); })) {
                sums_.setAside.emplace_back(entry->fts_path, entry->fts_pathlen);
                fts_set(walk, entry, FTS_SKIP);
                return;
            }
            entry->fts_number =
                entry->fts_parent->fts_number != 0 || holds(policy_.undatedFolders, name) ? 1 : 0;
        }
        count(*entry);
        if (entry->fts_level > FTS_ROOTLEVEL && shared_.mounts.isAt(AT_FDCWD, entry->fts_accpath)) {
            fts_set(walk, entry, FTS_SKIP);
        }
    }

    void count(const FTSENT& entry) {
        const struct stat& status = *entry.fts_statp;
        const bool isInUndatedFolder = entry.fts_level > FTS_ROOTLEVEL && entry.fts_parent->fts_number != 0;
        const bool isDated =
            !isInUndatedFolder && !holds(policy_.undatedFiles, {entry.fts_name, entry.fts_namelen});
        const std::int64_t before = tally_.allocatedBytes;
        const Counted counted = tally_.count(status, isDated, counting_, [&] {
            return cloneFamily(entry.fts_accpath, identityOf(status).device);
        });
        const std::int64_t bytes = tally_.allocatedBytes - before;
        if (limits_ != nullptr) {
            breakDown(entry, bytes, counted);
        }
        if (context_.progress != nullptr) {
            context_.progress->entries.fetch_add(1, std::memory_order_relaxed);
            context_.progress->bytes.fetch_add(bytes, std::memory_order_relaxed);
        }
    }

    void breakDown(const FTSENT& entry, std::int64_t bytes, Counted counted) {
        const std::string_view name(entry.fts_name, entry.fts_namelen);
        if (counted == Counted::file) {
            extensions_.add(name, bytes);
        }
        const auto level = static_cast<std::size_t>(entry.fts_level);
        endParts(level);
        const bool isPart = level == 0 || mostPartsAt(level - 1, *limits_) > 0;
        if (open_.empty() || (isPart && entry.fts_info == FTS_D)) {
            open_.push_back(newBranch(name, level, bytes));
        } else {
            open_.back()->addBytes(bytes);
        }
        if (entry.fts_info == FTS_D) {
            return;
        }
        Branch& branch = *open_.back();
        if (counted == Counted::linkedFile) {
            linkedParts_.meet(identityOf(*entry.fts_statp), {entry.fts_path, entry.fts_pathlen}, branch,
                              isPart && level > 0);
        } else if (isPart && level > 0) {
            branch.parts().add(name, bytes, false);
        }
    }

    [[nodiscard]] std::unique_ptr<Branch> newBranch(std::string_view name, std::size_t level,
                                                    std::int64_t bytes) const {
        return std::make_unique<Branch>(Branch{.parent = open_.empty() ? nullptr : open_.back().get(),
                                               .name = std::string(name),
                                               .mostParts = mostPartsAt(level, *limits_),
                                               .allocatedBytes = bytes});
    }

    /// The open parts are those above the entry that the walk is at; all others have been read.
    void endParts(std::size_t level) {
        while (open_.size() > level) {
            std::unique_ptr<Branch> ended = std::move(open_.back());
            open_.pop_back();
            open_.back()->join(std::move(ended));
        }
    }

    const TreeRequest& request_;
    const TreePolicy& policy_;
    Shared& shared_;
    const WalkContext& context_;
    const Counting counting_;
    TreeTally tally_;
    TreeSums sums_;

    const BreakdownLimits* limits_;             ///< None when nothing is broken down.
    std::vector<std::unique_ptr<Branch>> open_; ///< From the root downwards.
    LinkedParts linkedParts_;
    ExtensionTally extensions_;
};

} // namespace

std::vector<TreeSums> walkTreesPortably(std::span<const TreeRequest> requests, const WalkContext& context) {
    std::vector<TreeSums> sums;
    sums.reserve(requests.size());
    Shared shared{.context = context};
    for (const TreeRequest& request : requests) {
        sums.push_back(PortableWalk(request, sums.size(), shared).run());
    }
    shared.linked.settle(sums, context);
    return sums;
}

TreeBreakdown breakDownTreePortably(const TreeRequest& request, const BreakdownLimits& limits,
                                    const WalkContext& context) {
    Shared shared{.context = context};
    return PortableWalk(request, 0, shared, &limits).runBreakdown();
}

} // namespace lumo::platform
