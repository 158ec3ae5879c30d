#include "Platform/linux/WalkBreakdown.h"

#include "LumoCore/Basics/CheckedSum.h"

#include <utility>

namespace lumo::platform {

void Branch::add(LargestParts parts) {
    if (entries) {
        entries->add(std::move(parts));
    } else {
        entries = std::make_unique<LargestParts>(std::move(parts));
    }
}

TreeParts Branch::takeParts() {
    return entries ? entries->take() : TreeParts();
}

void Branch::joinParent(std::string_view name, std::size_t most) {
    parent->allocatedBytes = checkedSum(parent->allocatedBytes, allocatedBytes);
    if (!parent->entries) {
        parent->entries = std::make_unique<LargestParts>(most);
    }
    parent->entries->add({.name = std::string(name),
                          .allocatedBytes = allocatedBytes,
                          .isFolder = true,
                          .parts = takeParts()});
}

void BreakdownHaul::addFile(std::string_view name, std::int64_t bytes, bool isCountedFile) {
    if (isCountedFile) {
        extensions->add(name, bytes);
    }
    if (parts) {
        parts->add(name, bytes, false);
    }
}

void WalkBreakdown::begin(WalkedFolder& root) const {
    giveBranch(root, 0);
}

BreakdownHaul WalkBreakdown::haulFor(const WalkedFolder& folder, ExtensionTally& extensions) const {
    BreakdownHaul haul{.extensions = &extensions, .parts = {}};
    if (const std::size_t most = mostPartsAt(folder.depth, limits_); most > 0) {
        const Branch& branch = *folder.branch;
        haul.parts = branch.entries ? branch.entries->fresh() : LargestParts(most);
    }
    return haul;
}

void WalkBreakdown::place(WalkedFolder& child, std::int64_t ownBytes, BreakdownHaul& haul) const {
    if (haul.parts) {
        giveBranch(child, ownBytes);
        haul.branchedBytes += ownBytes;
    } else {
        child.branch = child.parent->branch;
    }
}

void WalkBreakdown::giveBranch(WalkedFolder& folder, std::int64_t ownBytes) const {
    Branch* above = folder.parent != nullptr ? folder.parent->branch : nullptr;
    // Freed by `end`.
    folder.branch = std::make_unique<Branch>(Branch{above, ownBytes}).release();
}

void WalkBreakdown::merge(const WalkedFolder& folder, std::int64_t bytes, BreakdownHaul haul) {
    Branch& branch = *folder.branch;
    branch.allocatedBytes = checkedSum(branch.allocatedBytes, bytes - haul.branchedBytes);
    if (haul.parts) {
        branch.add(std::move(*haul.parts));
    }
}

void WalkBreakdown::end(const WalkedFolder& folder) {
    if (folder.parent == nullptr) {
        const std::unique_ptr<Branch> branch(folder.branch);
        rootParts_ = branch->takeParts();
    } else if (folder.parent->branch != folder.branch) {
        const std::unique_ptr<Branch> branch(folder.branch);
        branch->joinParent(folder.name, mostPartsAt(folder.parent->depth, limits_));
    }
}

TreeBreakdown WalkBreakdown::take(TreeSums sums) {
    TreeBreakdown breakdown;
    breakdown.sums = std::move(sums);
    breakdown.parts = std::move(rootParts_);
    extensions_.addTo(breakdown);
    return breakdown;
}

} // namespace lumo::platform
