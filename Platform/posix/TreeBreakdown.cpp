#include "LumoCore/Basics/CheckedSum.h"
#include "Platform/AnnotatedMutex.h"
#include "Platform/BreakdownTally.h"
#include "Platform/TreeTally.h"
#include "Platform/WalkCollector.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

// Breaking a tree down: folders near the root have a branch each, and what lies deeper counts for the
// nearest.
namespace lumo::platform {

namespace {

class BranchClaim;

/// A name of a file that has several.
struct LinkedName {
    FileIdentity file;
    std::string path;
    bool isPart;
};

/// What one thread has found in a branch and not yet handed over.
struct Haul {
    std::unique_ptr<BranchClaim> claim;
    std::optional<LargestParts> parts; ///< Where entries are parts.
    std::int64_t bytes = 0;
    std::vector<LinkedName> linked = {};
    std::size_t foldersWithin = 0; ///< Entered ones that have no branch of their own.
};

/// The breakdown of the one tree of a walk.
class Breakdown final : public WalkCollection {
  public:
    explicit Breakdown(const BreakdownLimits& limits)
        : limits_(limits),
          root_(std::make_unique<Branch>(Branch{.name = {}, .mostParts = limits.mostParts})) {}

    std::unique_ptr<WalkCollector> collector() override;

    void settle(FileIdentity file, std::optional<std::int64_t> bytes) override {
        const Locked locked(mutex_);
        linked_.settle(file, bytes, extensions_);
    }

    /// The result once everything is settled.
    TreeBreakdown take(TreeSums sums) {
        const Locked locked(mutex_);
        TreeBreakdown breakdown;
        breakdown.sums = std::move(sums);
        breakdown.parts = root_->take();
        extensions_.addTo(breakdown);
        return breakdown;
    }

    /// Begins with the root, or with a folder in the branch of another.
    Haul begin();
    Haul begin(const BranchClaim& around, const EnteredFolder& folder);
    /// Goes on in a branch.
    Haul resume(std::unique_ptr<BranchClaim> claim);
    std::unique_ptr<BranchClaim> claim(const BranchClaim& claimed);
    void end(Haul haul);
    /// Gives up a claim. A branch on which nobody has one any more joins the one around it.
    void release(Branch& claimed);

    /// A tree that is one file with several names.
    void addRoot(LinkedName name) {
        const Locked locked(mutex_);
        linked_.meet(name.file, std::move(name.path), *root_, false);
    }

    void add(const ExtensionTally& extensions) {
        const Locked locked(mutex_);
        extensions_.add(extensions);
    }

  private:
    Haul haulIn(Branch& branch, std::int64_t bytes) LUMO_REQUIRES(mutex_);

    const BreakdownLimits limits_;
    AnnotatedMutex mutex_;
    const std::unique_ptr<Branch> root_ LUMO_THREADS(pt_guarded_by(mutex_));
    LinkedParts linked_ LUMO_GUARDED_BY(mutex_);
    ExtensionTally extensions_ LUMO_GUARDED_BY(mutex_); ///< Of the threads that have ended.
};

/// Keeps a branch from joining the one around it.
class BranchClaim final : public FolderClaim {
  public:
    /// Counted by whoever makes it.
    BranchClaim(Breakdown& breakdown, Branch& claimed) : branch(claimed), breakdown_(breakdown) {}
    ~BranchClaim() override { breakdown_.release(branch); }

    Branch& branch;

  private:
    Breakdown& breakdown_;
};

Haul Breakdown::begin() {
    const Locked locked(mutex_);
    return haulIn(*root_, 0);
}

Haul Breakdown::begin(const BranchClaim& around, const EnteredFolder& folder) {
    const Locked locked(mutex_);
    Branch& parent = around.branch;
    ++parent.claims; // Until the new one joins it.
    const std::size_t level = parent.level + 1;
    // Freed by the branch that it joins.
    auto branch = std::make_unique<Branch>(Branch{.parent = &parent,
                                                  .name = std::string(folder.name),
                                                  .level = level,
                                                  .mostParts = mostPartsAt(level, limits_)});
    return haulIn(*branch.release(), folder.bytes);
}

Haul Breakdown::resume(std::unique_ptr<BranchClaim> claim) {
    const Locked locked(mutex_);
    Branch& branch = claim->branch;
    return {.claim = std::move(claim), .parts = branch.freshParts()};
}

Haul Breakdown::haulIn(Branch& branch, std::int64_t bytes) {
    ++branch.claims;
    return {
        .claim = std::make_unique<BranchClaim>(*this, branch), .parts = branch.freshParts(), .bytes = bytes};
}

std::unique_ptr<BranchClaim> Breakdown::claim(const BranchClaim& claimed) {
    const Locked locked(mutex_);
    ++claimed.branch.claims;
    return std::make_unique<BranchClaim>(*this, claimed.branch);
}

void Breakdown::end(Haul haul) {
    {
        const Locked locked(mutex_);
        Branch& branch = haul.claim->branch;
        branch.addBytes(haul.bytes);
        for (LinkedName& name : haul.linked) {
            linked_.meet(name.file, std::move(name.path), branch, name.isPart);
        }
        if (haul.parts) {
            branch.parts().add(std::move(*haul.parts));
        }
    }
    haul.claim.reset();
}

void Breakdown::release(Branch& claimed) {
    const Locked locked(mutex_);
    for (Branch* branch = &claimed; branch != nullptr && --branch->claims == 0;) {
        Branch* parent = branch->parent;
        if (parent != nullptr) {
            parent->join(std::unique_ptr<Branch>(branch));
        }
        branch = parent;
    }
}

class BreakdownCollector final : public WalkCollector {
  public:
    explicit BreakdownCollector(Breakdown& breakdown) : breakdown_(breakdown) {}
    ~BreakdownCollector() override { breakdown_.add(extensions_); }

    void add(const WalkedEntry& entry) override {
        if (entry.counted == Counted::file) {
            extensions_.add(entry.name, entry.bytes);
        }
        const bool isPart = !hauls_.empty() && hauls_.back().parts;
        if (entry.counted == Counted::linkedFile) {
            LinkedName name{identityOf(entry.status), std::string(entry.folder).append(entry.name), isPart};
            if (hauls_.empty()) {
                breakdown_.addRoot(std::move(name));
            } else {
                hauls_.back().linked.push_back(std::move(name));
            }
        } else if (isPart) {
            hauls_.back().parts->add(entry.name, entry.bytes, S_ISDIR(entry.status.st_mode));
        }
        if (!hauls_.empty()) {
            hauls_.back().bytes = checkedSum(hauls_.back().bytes, entry.bytes);
        }
    }

    void enter(const EnteredFolder& folder) override {
        if (hauls_.empty()) {
            hauls_.push_back(breakdown_.begin());
        } else if (Haul& around = hauls_.back(); around.parts) {
            hauls_.push_back(breakdown_.begin(*around.claim, folder));
        } else {
            ++around.foldersWithin;
            around.bytes = checkedSum(around.bytes, folder.bytes);
        }
    }

    void leave() override {
        if (hauls_.back().foldersWithin > 0) {
            --hauls_.back().foldersWithin;
            return;
        }
        Haul ended = std::move(hauls_.back());
        hauls_.pop_back();
        breakdown_.end(std::move(ended));
    }

    void miss(std::string_view /*name*/) override {} // Its bytes are not known.

    std::unique_ptr<FolderClaim> share(std::size_t level) override {
        return breakdown_.claim(*hauls_[std::min(level, hauls_.size() - 1)].claim);
    }

    void resume(std::unique_ptr<FolderClaim> claim) override {
        hauls_.push_back(
            breakdown_.resume(std::unique_ptr<BranchClaim>(static_cast<BranchClaim*>(claim.release()))));
    }

  private:
    Breakdown& breakdown_;
    std::vector<Haul>
        hauls_; ///< The branches that the thread is in; only the last holds folders without one.
    ExtensionTally extensions_;
};

std::unique_ptr<WalkCollector> Breakdown::collector() {
    return std::make_unique<BreakdownCollector>(*this);
}

using WalkTrees = decltype(walkTrees);

TreeBreakdown brokenDownBy(WalkTrees* walk, const TreeRequest& request, const BreakdownLimits& limits,
                           const WalkContext& context) {
    Breakdown breakdown(limits);
    std::vector<TreeSums> sums = walk({&request, 1}, context, &breakdown);
    return breakdown.take(std::move(sums.front()));
}

} // namespace

TreeBreakdown breakDownTree(const TreeRequest& request, const BreakdownLimits& limits,
                            const WalkContext& context) {
    return brokenDownBy(walkTrees, request, limits, context);
}

TreeBreakdown breakDownTreePortably(const TreeRequest& request, const BreakdownLimits& limits,
                                    const WalkContext& context) {
    return brokenDownBy(walkTreesPortably, request, limits, context);
}

} // namespace lumo::platform
