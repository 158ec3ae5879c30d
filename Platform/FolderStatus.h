#pragma once

#include "Platform/Descriptor.h"
#include "Platform/SystemError.h"

#include <compare>
#include <cstdint>

/// What must be known of a folder before anything in it is touched. All of it is asked of an open descriptor,
/// so that the answer and what is done next are about the same folder.
namespace lumo::platform {

/// What a folder is, whatever path or mount it is reached by.
struct FolderIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    friend auto operator<=>(const FolderIdentity&, const FolderIdentity&) = default;
};

struct FolderStatus {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t mount = 0; ///< The mount it was reached through; 0 where the system does not tell.
    unsigned owner = 0;
    unsigned mode = 0; ///< Permission bits.

    [[nodiscard]] FolderIdentity identity() const { return {device, inode}; }

    /// Tells apart also two mounts of one file system.
    [[nodiscard]] bool isOnMountOf(const FolderStatus& other) const {
        return device == other.device && mount == other.mount;
    }
    [[nodiscard]] bool isSameFolderAs(const FolderStatus& other) const {
        return isOnMountOf(other) && inode == other.inode;
    }
};

/// Works for every descriptor of a folder, the ones below included.
SystemResult<FolderStatus> statusOf(int folder);

/// Opens a real folder on which this process may have no rights at all. The descriptor is good for asking,
/// for `addOwnerRights` and for opening what is in the folder. A link fails with ENOTDIR or ELOOP.
SystemResult<Descriptor> openWithoutRights(int parent, const char* name);

/// Lets the owner read, write and enter the open folder; the other bits of its mode stay as the status has
/// them.
SystemResult<void> addOwnerRights(int folder, const FolderStatus& status);

} // namespace lumo::platform
