#include "Platform/linux/WalkBreakdown.h"

#include "LumoCore/Basics/CheckedSum.h"

#include <utility>

namespace lumo::platform {

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
    folder.branch = std::make_unique<Branch>(Branch{.parent = above,
                                                    .name = folder.name,
                                                    .mostParts = mostPartsAt(folder.depth, limits_),
                                                    .allocatedBytes = ownBytes})
                        .release();
}

void WalkBreakdown::merge(const WalkedFolder& folder, std::int64_t bytes, BreakdownHaul haul) {
    Branch& branch = *folder.branch;
    branch.addBytes(bytes - haul.branchedBytes);
    for (auto& [file, path] : haul.linked) {
        linked_.meet(file, std::move(path), branch, haul.parts.has_value());
    }
    if (haul.parts) {
        branch.parts().add(std::move(*haul.parts));
    }
}

void WalkBreakdown::end(const WalkedFolder& folder) {
    if (folder.parent == nullptr) {
        root_.reset(folder.branch);
    } else if (folder.parent->branch != folder.branch) {
        folder.parent->branch->join(std::unique_ptr<Branch>(folder.branch));
    }
}

TreeBreakdown WalkBreakdown::take(TreeSums sums) {
    TreeBreakdown breakdown;
    breakdown.sums = std::move(sums);
    breakdown.parts = root_ ? root_->take() : TreeParts();
    extensions_.addTo(breakdown);
    return breakdown;
}

} // namespace lumo::platform
