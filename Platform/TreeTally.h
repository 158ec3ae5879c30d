#pragma once

#include "LumoCore/Basics/CheckedSum.h"
#include "Platform/LinkedFiles.h"
#include "Platform/TreeWalk.h"

#include <sys/stat.h>

/// How one entry enters the sums of its tree: shared by all walkers, so that they cannot differ in it.
namespace lumo::platform {

/// What counting the entries of one tree needs to know besides them.
struct Counting {
    const WalkContext& context;
    LinkedFiles& linked;                     ///< Of the whole walk.
    std::size_t request;                     ///< Which of the walk's trees it is.
    std::vector<LinkedFile>* kept = nullptr; ///< Where linked files are kept besides, when the tree is.

    /// True for the first name of the file.
    [[nodiscard]] bool meet(const LinkedFile& file) const {
        if (kept != nullptr && kept->size() <= MeasuredTree::mostLinked) {
            kept->push_back(file);
        }
        return linked.meet(file, request);
    }
};

/// What became of an entry.
enum class Counted {
    otherEntry,   ///< It is no regular file.
    file,         ///< It was charged.
    linkedFile,   ///< It has several names, and is charged when all are known.
    countedClone, ///< A clone of it was counted before.
};

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
    bool hasClones = false;

    /// Counts one entry by its status. `clone` yields the identity that its clones share, if it has any; it
    /// is asked only for regular files with blocks.
    template <class Clone>
    Counted count(const struct stat& status, bool isDated, const Counting& counting, Clone&& clone);

    void addTo(TreeSums& sums) const;

  private:
    void date(const struct stat& status);
    void charge(const struct stat& status);
};

/// When the entry was last changed.
Timestamp modificationDateOf(const struct stat& status);

std::int64_t bytesOfBlocks(std::int64_t blocks);

FileIdentity identityOf(const struct stat& status);

LinkedFile linkedFileOf(const struct stat& status);

/// Counts the trees that are known, before the others are walked.
void countKnown(std::span<const TreeRequest> requests, std::vector<TreeSums>& sums, LinkedFiles& linked);

/// Keeps the trees that are to be kept, after all were walked and before the linked files are settled. Their
/// linked files are there already.
void keepTrees(std::span<const TreeRequest> requests, const std::vector<TreeSums>& sums);

/// Adds to what is kept of one tree what a part of it brought.
void keepPart(MeasuredTree& tree, const TreeTally& tally, std::vector<LinkedFile> linked);

template <class Clone>
Counted TreeTally::count(const struct stat& status, bool isDated, const Counting& counting, Clone&& clone) {
    if (!S_ISREG(status.st_mode)) {
        allocatedBytes = checkedSum(allocatedBytes, bytesOfBlocks(status.st_blocks));
        return Counted::otherEntry;
    }
    if (isDated) {
        date(status);
    }
    const bool isLinked = status.st_nlink >= 2;
    if (isLinked && !counting.meet(linkedFileOf(status))) {
        return Counted::linkedFile;
    }
    bool isCountedClone = false;
    if (status.st_blocks > 0) {
        const std::optional<FileIdentity> family = clone();
        hasClones = hasClones || family.has_value();
        isCountedClone = family && !counting.context.claimClone(*family);
    }
    if (isLinked) {
        if (isCountedClone) {
            counting.linked.waive(identityOf(status));
        }
        return Counted::linkedFile;
    }
    if (isCountedClone) {
        return Counted::countedClone;
    }
    charge(status);
    return Counted::file;
}

} // namespace lumo::platform
