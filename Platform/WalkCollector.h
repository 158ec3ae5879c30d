#pragma once

#include "Platform/TreeWalk.h"

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
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
    virtual void leave() = 0;

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

    /// One for a thread, which calls this itself.
    virtual std::unique_ptr<WalkCollector> collector() = 0;

    /// Once everything is walked: what a file with several names takes, nothing when another walk is charged
    /// with it. Called once for each, by one thread, when all collectors are gone.
    virtual void settle(FileIdentity file, std::optional<std::int64_t> bytes) = 0;
};

} // namespace lumo::platform
