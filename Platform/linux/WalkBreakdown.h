#pragma once

#include "Platform/BreakdownTally.h"
#include "Platform/linux/WalkedFolder.h"

#include <memory>
#include <optional>
#include <string_view>

namespace lumo::platform {

/// A folder near the root of a tree, until all of it has been read. There may be very many of these.
struct Branch {
    Branch* parent = nullptr;                   ///< None for the root.
    std::int64_t allocatedBytes = 0;            ///< Without the parts that have not joined it yet.
    std::unique_ptr<LargestParts> entries = {}; ///< None before the first, and where entries are no parts.

    void add(LargestParts parts);
    [[nodiscard]] TreeParts takeParts();

    /// Counts the folder, of which all has been read, under that name with a parent that keeps `most` parts.
    void joinParent(std::string_view name, std::size_t most);
};

/// What one task finds for a breakdown, until it is merged.
struct BreakdownHaul {
    ExtensionTally* extensions = nullptr; ///< The thread's; none when nothing is broken down.
    std::optional<LargestParts> parts;    ///< Of a folder whose entries are parts.
    std::int64_t branchedBytes = 0;       ///< Own blocks of the folders that got a branch of their own.

    void addFile(std::string_view name, std::int64_t bytes, bool isCountedFile);
};

/// The breakdown of the one tree of a walk. Folders near the root have a branch each, and the folders below
/// count for it, so that a task costs one addition when it is merged. All operations are called with the
/// walk's lock held, unless they say otherwise.
class WalkBreakdown final {
  public:
    explicit WalkBreakdown(const BreakdownLimits& limits) : limits_(limits) {}

    /// Gives the tree's root its branch.
    void begin(WalkedFolder& root) const;

    /// What a task in the folder begins with.
    [[nodiscard]] BreakdownHaul haulFor(const WalkedFolder& folder, ExtensionTally& extensions) const;

    /// Gives a folder that its parent lists the branch that its bytes count for. Without the lock.
    void place(WalkedFolder& child, std::int64_t ownBytes, BreakdownHaul& haul) const;

    /// Merges a task's haul, all of whose entries together take that much.
    void merge(const WalkedFolder& folder, std::int64_t bytes, BreakdownHaul haul);

    /// Called when the folder and everything below it have been read, before its parent's turn.
    void end(const WalkedFolder& folder);

    void add(const ExtensionTally& extensions) { extensions_.add(extensions); }

    /// The result once everything has ended.
    [[nodiscard]] TreeBreakdown take(TreeSums sums);

  private:
    void giveBranch(WalkedFolder& folder, std::int64_t ownBytes) const;

    const BreakdownLimits limits_;
    TreeParts rootParts_;
    ExtensionTally extensions_; ///< Of the threads that have ended.
};

} // namespace lumo::platform
