#include "Platform/BreakdownTally.h"
#include "Platform/CloneIdentity.h"
#include "Platform/TreeTally.h"
#include "Platform/TreeWalk.h"

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

/// A folder near the root that is being read.
struct OpenPart {
    std::string name;
    std::int64_t allocatedBytes; ///< Without the parts that have not ended yet.
    LargestParts entries;
};

/// One tree being walked. A folder's `fts_number` is 1 when the files below it are undated.
class PortableWalk {
  public:
    /// Breaks the tree down within the limits, where there are any.
    PortableWalk(const TreeRequest& request, const WalkContext& context,
                 const BreakdownLimits* limits = nullptr)
        : request_(request), policy_(*request.policy), context_(context), limits_(limits) {}

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
        TreeBreakdown breakdown;
        breakdown.sums = run();
        endParts(1);
        if (!open_.empty()) {
            breakdown.parts = open_.front().entries.take();
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
            if (policy_.setsAside && policy_.setsAside(name)) {
                sums_.setAside.emplace_back(entry->fts_path, entry->fts_pathlen);
                fts_set(walk, entry, FTS_SKIP);
                return;
            }
            entry->fts_number =
                entry->fts_parent->fts_number != 0 || holds(policy_.undatedFolders, name) ? 1 : 0;
        }
        count(*entry);
    }

    void count(const FTSENT& entry) {
        const struct stat& status = *entry.fts_statp;
        const bool isInUndatedFolder = entry.fts_level > FTS_ROOTLEVEL && entry.fts_parent->fts_number != 0;
        const bool isDated =
            !isInUndatedFolder && !holds(policy_.undatedFiles, {entry.fts_name, entry.fts_namelen});
        const std::int64_t before = tally_.allocatedBytes;
        const std::int64_t filesBefore = tally_.fileCount;
        tally_.count(status, isDated, context_,
                     [&] { return cloneFamily(entry.fts_accpath, identityOf(status).device); });
        const std::int64_t bytes = tally_.allocatedBytes - before;
        if (limits_ != nullptr) {
            breakDown(entry, bytes, tally_.fileCount > filesBefore);
        }
        if (context_.progress != nullptr) {
            context_.progress->entries.fetch_add(1, std::memory_order_relaxed);
            context_.progress->bytes.fetch_add(bytes, std::memory_order_relaxed);
        }
    }

    void breakDown(const FTSENT& entry, std::int64_t bytes, bool isCountedFile) {
        const std::string_view name(entry.fts_name, entry.fts_namelen);
        if (isCountedFile) {
            extensions_.add(name, bytes);
        }
        const auto level = static_cast<std::size_t>(entry.fts_level);
        endParts(level);
        const bool isPart = level == 0 || mostPartsAt(level - 1, *limits_) > 0;
        if (isPart && entry.fts_info == FTS_D) {
            open_.push_back({std::string(name), bytes, LargestParts(mostPartsAt(level, *limits_))});
        } else if (!open_.empty()) {
            open_.back().allocatedBytes = checkedSum(open_.back().allocatedBytes, bytes);
            if (isPart) {
                open_.back().entries.add(name, bytes, false);
            }
        }
    }

    /// The open parts are those above the entry that the walk is at; all others have been read.
    void endParts(std::size_t level) {
        while (open_.size() > level) {
            OpenPart ended = std::move(open_.back());
            open_.pop_back();
            OpenPart& above = open_.back();
            above.allocatedBytes = checkedSum(above.allocatedBytes, ended.allocatedBytes);
            above.entries.add({.name = std::move(ended.name),
                               .allocatedBytes = ended.allocatedBytes,
                               .isFolder = true,
                               .parts = ended.entries.take()});
        }
    }

    const TreeRequest& request_;
    const TreePolicy& policy_;
    const WalkContext& context_;
    TreeTally tally_;
    TreeSums sums_;

    const BreakdownLimits* limits_; ///< None when nothing is broken down.
    std::vector<OpenPart> open_;    ///< From the root downwards.
    ExtensionTally extensions_;
};

} // namespace

std::vector<TreeSums> walkTreesPortably(std::span<const TreeRequest> requests, const WalkContext& context) {
    std::vector<TreeSums> sums;
    sums.reserve(requests.size());
    for (const TreeRequest& request : requests) {
        sums.push_back(PortableWalk(request, context).run());
    }
    return sums;
}

TreeBreakdown breakDownTreePortably(const TreeRequest& request, const BreakdownLimits& limits,
                                    const WalkContext& context) {
    return PortableWalk(request, context, &limits).runBreakdown();
}

} // namespace lumo::platform
