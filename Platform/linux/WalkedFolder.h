#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace lumo::platform {

struct Branch;

/// A folder whose tree is being measured. It lives from the moment its parent lists it until it and
/// everything below it has been read; a child keeps its parent alive.
struct WalkedFolder {
    // Fixed once the folder is queued.
    WalkedFolder* parent = nullptr; ///< None for the root of a tree.
    std::string name;               ///< The last component; the whole path for a root.
    std::size_t tree = 0;           ///< Index of the request.
    dev_t device = 0;
    ino_t inode = 0;
    std::uint32_t depth = 0;
    bool isUndated = false;
    Branch* branch = nullptr; ///< What its bytes count for when the tree is broken down.

    // Guarded by the walk's lock.
    std::uint32_t pending = 1; ///< Its own reading, parts of it handed to others, and unfinished children.
    std::uint32_t pins = 0;    ///< Threads that use the descriptor at this moment.
    int descriptor = -1;       ///< Kept open for its children while the budget allows.
    std::size_t heldIndex = 0; ///< Where it stands among the open folders, while it has a descriptor.

    /// True when an ancestor, or the folder itself, is the given object.
    [[nodiscard]] bool isWithin(dev_t otherDevice, ino_t otherInode) const;
    /// The absolute path of an entry of this folder.
    [[nodiscard]] std::string pathOf(const char* entry) const;
};

} // namespace lumo::platform
