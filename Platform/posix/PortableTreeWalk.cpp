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

/// One tree being walked. A folder's `fts_number` is 1 when the files below it are undated.
class PortableWalk {
  public:
    PortableWalk(const TreeRequest& request, const WalkContext& context)
        : request_(request), policy_(*request.policy), context_(context) {}

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
        tally_.count(status, isDated, context_,
                     [&] { return cloneFamily(entry.fts_accpath, identityOf(status).device); });
        if (context_.progress != nullptr) {
            context_.progress->entries.fetch_add(1, std::memory_order_relaxed);
            context_.progress->bytes.fetch_add(tally_.allocatedBytes - before, std::memory_order_relaxed);
        }
    }

    const TreeRequest& request_;
    const TreePolicy& policy_;
    const WalkContext& context_;
    TreeTally tally_;
    TreeSums sums_;
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

} // namespace lumo::platform
