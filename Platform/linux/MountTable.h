#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lumo::platform {

/// One line of the kernel's table of mounts that is a disk.
struct MountedDisk {
    std::string path;
    std::string source; ///< The device, or the share on a server.

    friend bool operator==(const MountedDisk&, const MountedDisk&) = default;
};

/// The disks in the text of /proc/self/mountinfo, each device once, in the order of the table. Lines that
/// make no sense are passed over. Paths are the bytes they stand for, without the table's escapes.
std::vector<MountedDisk> disksIn(std::string_view table);

/// The last components of all places in the same text at which something is mounted, ascending, without
/// doubles.
std::vector<std::string> mountNamesIn(std::string_view table);

} // namespace lumo::platform
