#pragma once

#include "LumoCore/Basics/Timestamp.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

/// Physical walks that add up what trees of files take on disk. Links are never followed, other volumes and
/// what is mounted in a tree never entered, and nothing is kept for a file with one name but its share of the
/// sums.
namespace lumo::platform {

/// What identifies an object on a volume: an inode for hard links, a clone identifier for clones.
struct FileIdentity {
    std::int32_t device = 0;
    std::uint64_t object = 0;

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// What a walk does differently in some folders and files of a tree: the one place that says what is counted
/// and what dates a tree, for every walk.
struct TreePolicy {
    /// Folders below the root for which this holds are listed in `setAside` instead of being counted or
    /// entered. Called from several threads at once; none are set aside when empty.
    std::function<bool(std::string_view name)> setsAside = {};
    /// Of the folders for which that holds, those by whose absolute path this holds are walked all the same.
    std::function<bool(const std::string& path)> walksAllTheSame = {};
    /// Absolute paths of further folders that are set aside.
    std::vector<std::string> furtherAside = {};
    /// Regular files with one of these names, or anywhere below a folder with one of those names, do not
    /// count for `lastDatedChange`.
    std::vector<std::string> undatedFiles = {};
    std::vector<std::string> undatedFolders = {};

    /// True when the folder is set aside. The path is asked for only where the name does not tell.
    template <class AbsolutePath>
    [[nodiscard]] bool isSetAside(std::string_view name, AbsolutePath&& absolutePath) const;
    /// True when the files in the folder are undated, by its name or by the folder around it.
    [[nodiscard]] bool isUndatedFolder(std::string_view name, bool isInUndatedFolder) const;
    [[nodiscard]] bool isDatedFile(std::string_view name, bool isInUndatedFolder) const;
};

/// The policy of a tree in which nothing is special.
const TreePolicy& plainTree();

/// The sums of one tree.
struct TreeSums {
    std::int64_t allocatedBytes = 0; ///< Blocks x 512 of every counted entry.
    std::int64_t apparentBytes = 0;  ///< Lengths of the counted regular files.
    std::int64_t fileCount = 0;      ///< Counted regular files.
    std::int64_t unreadableCount = 0;
    std::optional<Timestamp> lastModified; ///< Latest content change of a counted regular file.
    /// The same of every regular file but the undated ones, whoever is charged with it.
    std::optional<Timestamp> lastDatedChange;
    std::vector<std::string> setAside; ///< Absolute paths, ascending.
};

/// A regular file with several names.
struct LinkedFile {
    FileIdentity identity;
    std::int64_t allocatedBytes = 0;
    std::int64_t apparentBytes = 0;
    Timestamp modified = {};
};

/// A tree as one walk has measured it, so that another can count it without reading it: who else is measured
/// decides where a file with several names is charged.
struct MeasuredTree {
    static constexpr std::size_t mostLinked = 100000;

    TreeSums sums;                  ///< Without what has several names.
    std::vector<LinkedFile> linked; ///< What has, as often as it was met.
    /// Whether the other walk would count the same. Not where files have clones, or more names than are kept.
    bool isWhole = true;
};

/// One tree to measure. A path that is no folder is measured as the one entry it is. There may be very many
/// of these, so they own nothing: what they point to must outlive the walk.
struct TreeRequest {
    std::string_view path;
    const TreePolicy* policy = &plainTree();
    const MeasuredTree* known = nullptr; ///< Taken for what is there, without a word to a collection.
    MeasuredTree* kept = nullptr;        ///< Where the tree is kept for another walk, when given.
};

struct TreePart;

/// The largest entries of one folder.
struct TreeParts {
    std::vector<TreePart> largest; ///< Largest first; of equal ones by name, ascending.
    std::int64_t restCount = 0;    ///< How many entries more there are,
    std::int64_t restBytes = 0;    ///< and what these take.
};

/// An entry near the root of a tree, with everything below it.
struct TreePart {
    std::string name;
    std::int64_t allocatedBytes = 0; ///< 0 for a file that was charged where another name of it stands.
    bool isFolder = false;
    TreeParts parts; ///< Of a folder; empty below the levels asked for.
};

/// What the regular files with one extension take.
struct ExtensionSum {
    std::string extension; ///< Without the point, A to Z in lower case; empty for files that have none.
    std::int64_t allocatedBytes = 0;
};

/// How much is kept of a tree that is broken down.
struct BreakdownLimits {
    std::size_t mostParts = 1000;   ///< Entries of the root folder; at least 1.
    std::size_t mostPartsBelow = 0; ///< Entries of each folder in it; with 0 there is only the one level.
};

/// The sums of one tree, and of its parts. The parts of the root folder and its own blocks add up to the
/// whole; the extensions add up to what the regular files take.
struct TreeBreakdown {
    TreeSums sums;
    TreeParts parts;
    std::vector<ExtensionSum> extensions; ///< Ascending by extension.
    /// Files whose extensions are not listed: a tree may hold a million different ones, and only some
    /// thousands are kept, those with the largest sums so far.
    std::int64_t otherExtensionsBytes = 0;
};

/// What a walk has counted so far, for whoever shows it. Only ever grows during a walk.
struct WalkProgress {
    std::atomic<std::int64_t> entries = 0;
    std::atomic<std::int64_t> bytes = 0;
};

class WalkCollection;

/// What all trees of one walk share. The two claims are asked for regular files that may be reached twice, by
/// one thread at a time, and answer true the first time an identity is seen. A file with several names is
/// charged to the first of the requests that reach it, and when a tree is broken down under the first of its
/// paths there, in byte order: results do not depend on which thread was faster.
struct WalkContext {
    std::function<bool(FileIdentity)> claimLink;
    std::function<bool(FileIdentity)> claimClone;
    WalkProgress* progress = nullptr;
    std::stop_token stop = {};
};

/// The sums of each request, in their order. Returns early, with what was counted, once a stop is requested.
/// Work is shared between threads inside a tree as well as between trees; at most 256 descriptors are open,
/// and half of those that the process may have. A collection hears of every entry.
std::vector<TreeSums> walkTrees(std::span<const TreeRequest> requests, const WalkContext& context,
                                WalkCollection* collection = nullptr);

/// The same through the C library's hierarchy walk, one tree after the other on the calling thread. It names
/// entries by whole paths, so what lies beyond the system's path length counts as unreadable.
std::vector<TreeSums> walkTreesPortably(std::span<const TreeRequest> requests, const WalkContext& context,
                                        WalkCollection* collection = nullptr);

/// One tree and its parts in one walk. Everything else is as for `walkTrees`.
TreeBreakdown breakDownTree(const TreeRequest& request, const BreakdownLimits& limits,
                            const WalkContext& context);

/// The same by the portable walk.
TreeBreakdown breakDownTreePortably(const TreeRequest& request, const BreakdownLimits& limits,
                                    const WalkContext& context);

template <class AbsolutePath>
bool TreePolicy::isSetAside(std::string_view name, AbsolutePath&& absolutePath) const {
    if (setsAside && setsAside(name)) {
        return !walksAllTheSame || !walksAllTheSame(absolutePath());
    }
    return !furtherAside.empty() &&
           std::find(furtherAside.begin(), furtherAside.end(), absolutePath()) != furtherAside.end();
}

} // namespace lumo::platform
