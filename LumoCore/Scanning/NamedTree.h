#pragma once

#include "Platform/AnnotatedMutex.h"
#include "Platform/TreeWalk.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// The number of an entry of a `NamedTree`, the same as long as the tree lives.
using EntryIndex = std::uint32_t;
inline constexpr EntryIndex noEntry = 0xFFFFFFFF;

/// What an entry is besides its sums; several may hold.
namespace EntryTraits {
inline constexpr std::uint8_t folder = 1;
inline constexpr std::uint8_t link = 2;        ///< A symbolic link.
inline constexpr std::uint8_t special = 4;     ///< Neither folder, file nor link.
inline constexpr std::uint8_t hasNames = 8;    ///< A file with several names.
inline constexpr std::uint8_t unreadable = 16; ///< Its contents, or its status, could not be read.
inline constexpr std::uint8_t leftOut = 32;    ///< Another volume, or left out by whoever wrote an export.
inline constexpr std::uint8_t holdsUnreadable = 64; ///< Something below it could not be read.
} // namespace EntryTraits

/// What an entry takes, with everything below it.
struct EntrySums {
    std::int64_t bytes = 0;     ///< Allocated; at most 2^55.
    std::uint32_t items = 0;    ///< Entries below it.
    std::uint32_t modified = 0; ///< Latest content change, in seconds since 1970; 0 when unknown.

    EntrySums& operator+=(const EntrySums& other);
    friend bool operator==(const EntrySums&, const EntrySums&) = default;
};

/// An entry as it is at one moment.
struct NamedEntry {
    EntryIndex index = noEntry;
    EntryIndex parent = noEntry; ///< None for the root, and for what was taken out of the tree.
    std::string_view name;       ///< Of the root its whole path. Lasts as long as the tree.
    EntrySums sums;
    std::uint8_t traits = 0;

    [[nodiscard]] bool is(std::uint8_t trait) const { return (traits & trait) != 0; }
};

/// What one thread has found and hands over at once, so that threads rarely wait for each other.
struct TreeBatch {
    /// An entry that the tree has, or one of this batch.
    struct Place {
        EntryIndex index = noEntry;
        bool isInBatch = false;
    };
    struct Found {
        Place parent;
        std::uint32_t nameAt = 0;
        std::uint32_t nameBytes = 0;
        EntrySums sums; ///< Its own, and what was found below it so far; the folders around it do not grow.
        std::uint8_t traits = 0;
        std::int64_t length = 0;
    };
    struct Change {
        EntryIndex entry = noEntry;
        EntrySums sums;
        bool reachesUp = false; ///< The folders around it grow, too, but not itself.
    };
    /// A name of a file that has several.
    struct Name {
        Place entry;
        platform::FileIdentity file;
        std::int64_t bytes = 0;
        std::uint32_t links = 0;
    };

    std::string names;
    std::vector<Found> entries;
    std::vector<Change> changes;
    std::vector<Name> linked;

    /// Adds an entry; its number in the batch.
    EntryIndex add(Place parent, std::string_view name, const EntrySums& sums, std::uint8_t traits,
                   std::int64_t length = 0);
    [[nodiscard]] bool isEmpty() const { return entries.empty() && changes.empty(); }
    void clear();
};

/// A tree of files by their names, in 32 bytes an entry besides its name, which is mostly kept once. Several
/// threads may fill it while others read: each call holds its lock no longer than it takes to copy what is
/// asked for, and that of a large folder piece by piece.
///
/// A file with several names takes its bytes where the first of its paths stands, in byte order, once
/// `chargeLinked` was called; until then it takes none. What is set aside comes last (see `chargeLast`).
class NamedTree final {
  public:
    /// Whether the lengths of files are kept besides, in 8 bytes more an entry.
    enum class Lengths { dropped, kept };

    /// A tree of nothing but its root, a folder.
    explicit NamedTree(std::string rootPath, Lengths lengths = Lengths::dropped);

    static constexpr EntryIndex root = 0;

    ~NamedTree();
    NamedTree(const NamedTree&) = delete;
    NamedTree& operator=(const NamedTree&) = delete;

    // Filling.

    /// Takes over the batch, which is empty afterwards. The entry of number n in the batch has from then on
    /// the number that is returned plus n.
    EntryIndex add(TreeBatch& batch);
    /// Settles where files with several names take their bytes: again after each change.
    void chargeLinked();
    /// What lies in the folder at that absolute path is charged with a file only where that has no name
    /// elsewhere in the tree. To be said before anything is charged.
    void chargeLast(std::string folder);
    /// Nobody is charged with the file any more: another measurement was.
    void waive(platform::FileIdentity file);
    /// Takes an entry and all below it out of the tree; the folders around it shrink. What is still being
    /// found below it does not come back.
    void detach(EntryIndex entry);
    /// The entry, or the rest of what it holds, could not be read: the folders around it hold such then.
    void markUnreadable(EntryIndex entry);

    /// Tells the threads that fill the tree that somebody wants to see what they have.
    void askForNews() { news_.fetch_add(1, std::memory_order_relaxed); }
    [[nodiscard]] std::uint32_t newsAsked() const { return news_.load(std::memory_order_relaxed); }

    // Reading.

    [[nodiscard]] NamedEntry entry(EntryIndex index) const;
    /// The entries of a folder, in no order.
    [[nodiscard]] std::vector<NamedEntry> entriesOf(EntryIndex folder) const;
    /// The same of what was last changed before that moment, in seconds since 1970: entries that are that old
    /// with all they hold, and folders that also hold newer things with the sums of the older ones in them.
    /// What has no date is left out.
    [[nodiscard]] std::vector<NamedEntry> entriesChangedBefore(EntryIndex folder, std::uint32_t moment) const;
    /// True when the folder itself, without what is deeper, has more entries than that.
    [[nodiscard]] bool hasMoreThan(EntryIndex folder, std::size_t entries) const;
    [[nodiscard]] std::optional<EntryIndex> entryNamed(EntryIndex folder, std::string_view name) const;
    /// The entry at an absolute path; absent when the tree has none there.
    [[nodiscard]] std::optional<EntryIndex> entryAt(std::string_view path) const;
    /// Those that the tree has at these absolute paths, in no order: each folder is looked through once,
    /// however many of them are in it.
    [[nodiscard]] std::vector<EntryIndex> entriesAt(std::span<const std::string> paths) const;
    [[nodiscard]] std::string pathOf(EntryIndex index) const;
    [[nodiscard]] std::vector<std::string> pathsOf(std::span<const EntryIndex> entries) const;
    [[nodiscard]] bool holds(EntryIndex index) const; ///< It was not taken out.
    /// What goes from the disk when these entries go, none of which lies in another: files that keep a name
    /// elsewhere do not count.
    [[nodiscard]] std::int64_t freedWithout(std::span<const EntryIndex> entries) const;
    /// What these entries hold that stays on the disk when they go, and `besides` with them, none of which
    /// lies in another: files that keep a name elsewhere.
    [[nodiscard]] std::int64_t keptWithout(std::span<const EntryIndex> entries,
                                           std::optional<EntryIndex> besides = {}) const;

    /// What a visit of the whole tree tells, folders before what they hold.
    struct Visited {
        NamedEntry entry;
        std::int64_t ownBytes = 0;                  ///< Without what is below it.
        std::int64_t length = 0;                    ///< Where lengths are kept.
        std::optional<platform::FileIdentity> file; ///< Of a file with several names,
        std::uint32_t links = 0;                    ///< and how many.
        std::int64_t fileBytes = 0;                 ///< What it takes, wherever that is charged.
    };
    /// Calls `enter` for every entry and `leave` after what a folder holds, until one of them answers false.
    /// The tree is locked all the while.
    void visit(const std::function<bool(const Visited&)>& enter,
               const std::function<bool(const NamedEntry&)>& leave) const;

  private:
    struct Node;
    struct LinkedName {
        platform::FileIdentity file;
        std::int64_t bytes = 0;
        EntryIndex entry = noEntry;
        std::uint32_t links = 0;
        bool isCharged = false;
    };

    Node& node(EntryIndex index) const LUMO_REQUIRES(mutex_);
    EntryIndex append(EntryIndex parent, std::string_view name, const EntrySums& sums, std::uint8_t traits,
                      std::int64_t length) LUMO_REQUIRES(mutex_);
    std::uint32_t keep(std::string_view name) LUMO_REQUIRES(mutex_);
    [[nodiscard]] std::string_view nameAt(std::uint32_t place) const LUMO_REQUIRES(mutex_);
    [[nodiscard]] NamedEntry read(EntryIndex index) const LUMO_REQUIRES(mutex_);
    /// The entries of a folder, or what was changed before that moment.
    [[nodiscard]] std::vector<NamedEntry> collected(EntryIndex folder,
                                                    std::optional<std::uint32_t> moment) const;
    [[nodiscard]] EntrySums sumsBefore(EntryIndex top, std::uint32_t moment) const LUMO_REQUIRES(mutex_);
    [[nodiscard]] std::string path(EntryIndex index) const LUMO_REQUIRES(mutex_);
    [[nodiscard]] bool isHeld(EntryIndex index) const LUMO_REQUIRES(mutex_);
    /// The names that go with the entries, of files with several: those of one file one after the other.
    [[nodiscard]] std::vector<LinkedName> linkedIn(std::vector<EntryIndex> entries) const
        LUMO_REQUIRES(mutex_);
    /// True when it is one of the entries, which ascend, or lies in one.
    [[nodiscard]] bool isBelow(EntryIndex index, std::span<const EntryIndex> entries) const
        LUMO_REQUIRES(mutex_);
    void tellUnreadable(EntryIndex index) LUMO_REQUIRES(mutex_);
    void settleAround(EntryIndex taken, EntryIndex folder) LUMO_REQUIRES(mutex_);
    void growAround(EntryIndex index, const EntrySums& sums) LUMO_REQUIRES(mutex_);
    void shrinkAround(EntryIndex index, const EntrySums& sums) LUMO_REQUIRES(mutex_);
    void chargeGroup(std::span<LinkedName> names) LUMO_REQUIRES(mutex_);
    void sortLinked() LUMO_REQUIRES(mutex_);
    [[nodiscard]] Visited visited(EntryIndex index, std::span<const LinkedName> linked) const
        LUMO_REQUIRES(mutex_);

    const Lengths lengths_;
    mutable platform::AnnotatedMutex mutex_;
    /// In pieces, so that growing moves nothing: nobody waits for that, and it takes no memory twice.
    std::vector<std::unique_ptr<Node[]>> nodes_ LUMO_GUARDED_BY(mutex_);
    std::vector<std::unique_ptr<std::int64_t[]>> lengthsOf_ LUMO_GUARDED_BY(mutex_);
    EntryIndex count_ LUMO_GUARDED_BY(mutex_) = 0;
    std::vector<std::unique_ptr<char[]>> names_ LUMO_GUARDED_BY(mutex_);
    std::size_t namesUsed_ LUMO_GUARDED_BY(mutex_) = 0;
    /// Where a name was kept last, by a part of its hash: a name that comes again is not kept twice.
    std::vector<std::uint32_t> remembered_ LUMO_GUARDED_BY(mutex_);
    std::vector<LinkedName> linked_ LUMO_GUARDED_BY(mutex_);
    bool isLinkedSorted_ LUMO_GUARDED_BY(mutex_) = true;
    std::string chargedLast_ LUMO_GUARDED_BY(mutex_); ///< Empty for none.
    std::atomic<std::uint32_t> news_ = 0;
};

/// Measures what stands at a path, and lists all of it in the tree while it goes on: at its root, which has
/// that path, or as `as`, an entry that `add` has made. The same walk, and the same sums, as
/// `FileTree::measure`. Returns how many entries could not be read. After a stop the tree holds what was
/// found until then.
std::int64_t measureInto(NamedTree& tree, const std::string& path, EntryIndex as,
                         platform::WalkProgress* progress, const std::stop_token& stop);

} // namespace lumo
