#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The disks that are in use on this machine.
namespace lumo::platform {

/// A mounted volume.
struct MountedVolume {
    std::string path; ///< Where it is mounted.
    std::string name; ///< Its label where the system knows one, else the last component of its path.
    std::int64_t total = 0;
    std::int64_t free = 0; ///< To this user.

    friend bool operator==(const MountedVolume&, const MountedVolume&) = default;
};

/// The mounted volumes that a person would call a disk: drives, memory sticks, discs and shares on a network,
/// in the order of the system, each device once and the start-up disk under "/". What the system keeps in
/// memory, images that packages run from and folders that are shown at a second place are none, and one that
/// does not tell its size is left out.
///
/// A share whose server is gone may hold the caller up for minutes: to be called in the background.
std::vector<MountedVolume> mountedVolumes();

/// The folders in which this system mounts other disks.
std::span<const std::string_view> volumeFolders();

} // namespace lumo::platform
