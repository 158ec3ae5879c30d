#pragma once

#include "Platform/linux/WalkedFolder.h"

#include <mutex>
#include <vector>

namespace lumo::platform {

/// The descriptors that folders keep for their children, within a budget. When it is used up a folder far
/// from the depth at which the walk is loses its descriptor; it is opened again from its nearest open
/// ancestor when its turn comes. Paths are never put together, so depth has no limit.
///
/// All operations take the walk's lock, which must be held by the caller.
class OpenFolders final {
  public:
    using Lock = std::unique_lock<std::mutex>;

    explicit OpenFolders(std::size_t budget) : budget_(budget) {}
    ~OpenFolders();
    OpenFolders(const OpenFolders&) = delete;
    OpenFolders& operator=(const OpenFolders&) = delete;

    /// Keeps a descriptor that belongs to the folder from now on.
    void hold(WalkedFolder& folder, int descriptor);

    /// The folder's descriptor, pinned until `unpin`; -1 (and no pin) when the folder cannot be reached any
    /// more. May release the lock for a while.
    int pin(WalkedFolder& folder, Lock& lock);
    void unpin(WalkedFolder& folder);

    /// Takes the folder's descriptor from it, if it has one.
    void release(WalkedFolder& folder);

    /// The same for every descriptor that nobody uses at this moment.
    void releaseUnused();

    /// The descriptors that folders lost since the last call, for the caller to close once it has let go of
    /// the lock: closing takes long enough to make the other threads queue.
    std::vector<int> takeReleased();

  private:
    struct Opened {
        WalkedFolder* folder;
        int descriptor;
    };

    void evictBeyondBudget();
    int reopen(WalkedFolder& folder, Lock& lock);
    static std::vector<Opened> descend(const std::vector<WalkedFolder*>& upwards, int base);

    const std::size_t budget_;
    std::vector<WalkedFolder*> held_;
    std::vector<int> released_;
    std::mutex reopening_; ///< One at a time, so that reopening needs few descriptors of its own.
};

} // namespace lumo::platform
