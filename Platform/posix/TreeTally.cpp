#include "Platform/TreeTally.h"

#include <algorithm>
#include <iterator>

namespace lumo::platform {

namespace {

bool isLater(const timespec& left, const timespec& right) {
    return left.tv_sec != right.tv_sec ? left.tv_sec > right.tv_sec : left.tv_nsec > right.tv_nsec;
}

void keepLater(timespec& latest, bool& known, const timespec& candidate) {
    if (!known || isLater(candidate, latest)) {
        latest = candidate;
        known = true;
    }
}

timespec modificationOf(const struct stat& status) {
#ifdef __APPLE__
    return status.st_mtimespec;
#else
    return status.st_mtim;
#endif
}

Timestamp timestampOf(const timespec& moment) {
    // 0001-01-01 and 9999-12-31: beyond these a date has no four-digit year.
    constexpr std::int64_t earliest = -62135596800;
    constexpr std::int64_t latest = 253402300799;
    const auto seconds = std::clamp<std::int64_t>(moment.tv_sec, earliest, latest);
    return Timestamp(std::chrono::seconds(seconds) + std::chrono::microseconds(moment.tv_nsec / 1000));
}

void keepLater(std::optional<Timestamp>& latest, const timespec& candidate) {
    const Timestamp moment = timestampOf(candidate);
    if (!latest || moment > *latest) {
        latest = moment;
    }
}

bool holds(const std::vector<std::string>& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

} // namespace

Timestamp modificationDateOf(const struct stat& status) {
    return timestampOf(modificationOf(status));
}

bool TreePolicy::isUndatedFolder(std::string_view name, bool isInUndatedFolder) const {
    return isInUndatedFolder || holds(undatedFolders, name);
}

bool TreePolicy::isDatedFile(std::string_view name, bool isInUndatedFolder) const {
    return !isInUndatedFolder && !holds(undatedFiles, name);
}

const TreePolicy& plainTree() {
    static const TreePolicy policy;
    return policy;
}

std::int64_t bytesOfBlocks(std::int64_t blocks) {
    // The unit of st_blocks, whatever the file system's own block size is (POSIX leaves it open; every system
    // this runs on uses 512).
    constexpr std::int64_t blockBytes = 512;
    return checkedProduct(blocks, blockBytes);
}

FileIdentity identityOf(const struct stat& status) {
    // The kernel's device numbers have 32 bits; only the C library's type is wider.
    return {static_cast<std::int32_t>(status.st_dev), status.st_ino};
}

LinkedFile linkedFileOf(const struct stat& status) {
    return {.identity = identityOf(status),
            .allocatedBytes = bytesOfBlocks(status.st_blocks),
            .apparentBytes = status.st_size,
            .modified = modificationDateOf(status)};
}

void countKnown(std::span<const TreeRequest> requests, std::vector<TreeSums>& sums, LinkedFiles& linked) {
    for (std::size_t request = 0; request < requests.size(); ++request) {
        if (const MeasuredTree* tree = requests[request].known) {
            sums[request] = tree->sums;
            for (const LinkedFile& file : tree->linked) {
                linked.meet(file, request);
            }
        }
    }
}

void keepTrees(std::span<const TreeRequest> requests, const std::vector<TreeSums>& sums) {
    for (std::size_t request = 0; request < requests.size(); ++request) {
        if (MeasuredTree* tree = requests[request].kept) {
            tree->sums = sums[request];
        }
    }
}

void keepPart(MeasuredTree& tree, const TreeTally& tally, std::vector<LinkedFile> linked) {
    tree.isWhole =
        tree.isWhole && !tally.hasClones && tree.linked.size() + linked.size() <= MeasuredTree::mostLinked;
    if (tree.isWhole) {
        std::ranges::move(linked, std::back_inserter(tree.linked));
    } else {
        tree.linked.clear();
    }
}

void TreeTally::date(const struct stat& status) {
    keepLater(lastDatedChange, hasDatedChange, modificationOf(status));
}

void TreeTally::charge(const struct stat& status) {
    allocatedBytes = checkedSum(allocatedBytes, bytesOfBlocks(status.st_blocks));
    apparentBytes = saturatedSum(apparentBytes, status.st_size);
    ++fileCount;
    keepLater(lastModified, hasModified, modificationOf(status));
}

void TreeTally::addTo(TreeSums& sums) const {
    sums.allocatedBytes = checkedSum(sums.allocatedBytes, allocatedBytes);
    sums.apparentBytes = saturatedSum(sums.apparentBytes, apparentBytes);
    sums.fileCount += fileCount;
    sums.unreadableCount += unreadableCount;
    if (hasModified) {
        keepLater(sums.lastModified, lastModified);
    }
    if (hasDatedChange) {
        keepLater(sums.lastDatedChange, lastDatedChange);
    }
}

} // namespace lumo::platform
