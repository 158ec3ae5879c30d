#pragma once

#include "LumoCore/Basics/CheckedSum.h"
#include "Platform/TreeWalk.h"

#include <sys/stat.h>

/// How one entry enters the sums of its tree: shared by all walkers, so that they cannot differ in it.
namespace lumo::platform {

/// Sums of a part of a tree, kept by one thread until they are merged.
struct TreeTally {
    std::int64_t allocatedBytes = 0;
    std::int64_t apparentBytes = 0;
    std::int64_t fileCount = 0;
    std::int64_t unreadableCount = 0;
    timespec lastModified = {};
    timespec lastDatedChange = {};
    bool hasModified = false;
    bool hasDatedChange = false;

    /// Counts one entry by its status. `clone` yields the identity that its clones share, if it has any; it
    /// is asked only for regular files with blocks.
    template <class Clone>
    void count(const struct stat& status, bool isDated, const WalkContext& context, Clone&& clone);

    void addTo(TreeSums& sums) const;

  private:
    void charge(const struct stat& status, bool isDated);
};

/// When the entry was last changed.
Timestamp modificationDateOf(const struct stat& status);

std::int64_t bytesOfBlocks(std::int64_t blocks);

inline FileIdentity identityOf(const struct stat& status) {
    // The kernel's device numbers have 32 bits; only the C library's type is wider.
    return {static_cast<std::int32_t>(status.st_dev), status.st_ino};
}

template <class Clone>
void TreeTally::count(const struct stat& status, bool isDated, const WalkContext& context, Clone&& clone) {
    if (!S_ISREG(status.st_mode)) {
        allocatedBytes = checkedSum(allocatedBytes, bytesOfBlocks(status.st_blocks));
        return;
    }
    if (status.st_nlink >= 2 && !context.claimLink(identityOf(status))) {
        return;
    }
    if (status.st_blocks > 0) {
        const std::optional<FileIdentity> family = clone();
        if (family && !context.claimClone(*family)) {
            return;
        }
    }
    charge(status, isDated);
}

} // namespace lumo::platform
