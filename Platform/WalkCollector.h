#pragma once

#include "Platform/TreeWalk.h"

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

/// What a walk finds, entry by entry, for whoever makes more of it than sums: the parts of a tree, a list of
/// its largest files, the whole tree. The walk stays the same: what is entered, counted and charged is
/// settled before a collector hears of it.
namespace lumo::platform {

enum class Counted;

/// An entry whose contents, if it has any, are not walked: a file, a link, the top of a mount.
struct WalkedEntry {
    std::string_view name;
    /// Where it lies; ends with a slash. Both texts last as long as the call.
    std::string_view folder;
    const struct stat& status;
    std::int64_t bytes; ///< What its tree was charged for it so far.
    Counted counted;
};

/// A folder whose contents come next.
struct EnteredFolder {
    std::string_view name; ///< The last component; the whole path for the root of a tree.
    std::size_t request;   ///< Which tree it belongs to.
    std::int64_t bytes;    ///< Its own blocks.
    FileIdentity identity;
};

/// Keeps a folder that one collector is in for another to go on with. Dropped when the walk is stopped.
class FolderClaim {
  public:
    FolderClaim() = default;
    FolderClaim(const FolderClaim&) = delete;
    FolderClaim& operator=(const FolderClaim&) = delete;
    virtual ~FolderClaim() = default;
};

/// Takes what one thread finds. A thread goes depth first, so that `enter` and `leave` nest; an entry belongs
/// to the innermost folder, and without one is itself the root of a tree.
class WalkCollector {
  public:
    WalkCollector() = default;
    WalkCollector(const WalkCollector&) = delete;
    WalkCollector& operator=(const WalkCollector&) = delete;
    virtual ~WalkCollector() = default;

    virtual void add(const WalkedEntry& entry) = 0;
    virtual void enter(const EnteredFolder& folder) = 0;
    /// Where the collection looks first: all names in the folder entered last, before anything else of it.
    /// When it is not accepted nothing in it is counted, told or entered.
    virtual bool accepts(std::span<const std::string_view> /*names*/) { return true; }
    virtual void leave() = 0;
    /// Something could not be read: an entry of the innermost folder, of which nothing but its name is known,
    /// or with an empty name that folder itself, all of it or the rest. Each counts as unreadable.
    virtual void miss(std::string_view name) = 0;

    /// The folder that so many entered ones lie around, 0 for the outermost: another thread goes on with a
    /// part of it.
    virtual std::unique_ptr<FolderClaim> share(std::size_t level) = 0;
    /// Goes on with a folder that another thread shared, as the outermost; ends with a `leave` of its own.
    virtual void resume(std::unique_ptr<FolderClaim> claim) = 0;
};

/// The collectors of one walk.
class WalkCollection {
  public:
    WalkCollection() = default;
    WalkCollection(const WalkCollection&) = delete;
    WalkCollection& operator=(const WalkCollection&) = delete;
    virtual ~WalkCollection() = default;

    /// True when its collectors are asked to accept each folder by the names in it. Then one thread reads a
    /// folder to its end, however large it is.
    [[nodiscard]] virtual bool looksFirst() const { return false; }

    /// One for a thread, which calls this itself.
    virtual std::unique_ptr<WalkCollector> collector() = 0;

    /// Once everything is walked: what a file with several names takes, nothing when another walk is charged
    /// with it. Called once for each, by one thread, when all collectors are gone.
    virtual void settle(FileIdentity file, std::optional<std::int64_t> bytes) = 0;
};

} // namespace lumo::platform
