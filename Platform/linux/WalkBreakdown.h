#pragma once

#include "Platform/BreakdownTally.h"
#include "Platform/linux/WalkedFolder.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumo::platform {

/// What one task finds for a breakdown, until it is merged.
struct BreakdownHaul {
    ExtensionTally* extensions = nullptr; ///< The thread's; none when nothing is broken down.
    std::optional<LargestParts> parts;    ///< Of a folder whose entries are parts.
    std::int64_t branchedBytes = 0;       ///< Own blocks of the folders that got a branch of their own.
    /// The names of files that have several: identity and path.
    std::vector<std::pair<FileIdentity, std::string>> linked = {};

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

    /// Says what a file with several names takes. Once all folders have ended; without the lock.
    void settle(FileIdentity file, std::optional<std::int64_t> bytes) {
        linked_.settle(file, bytes, extensions_);
    }

    void add(const ExtensionTally& extensions) { extensions_.add(extensions); }

    /// The result once everything has ended.
    [[nodiscard]] TreeBreakdown take(TreeSums sums);

  private:
    void giveBranch(WalkedFolder& folder, std::int64_t ownBytes) const;

    const BreakdownLimits limits_;
    std::unique_ptr<Branch> root_; ///< Once it has been read.
    LinkedParts linked_;
    ExtensionTally extensions_; ///< Of the threads that have ended.
};

} // namespace lumo::platform
