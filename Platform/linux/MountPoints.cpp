#include "Platform/MountPoints.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/StateFile.h"
#include "Platform/linux/MountTable.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>

namespace lumo::platform {

MountPoints MountPoints::ofThisProcess() {
    constexpr std::size_t mostBytes = std::size_t{16} * 1024 * 1024;
    const auto table = readWhole("/proc/self/mountinfo", mostBytes);
    return MountPoints(table ? mountNamesIn(*table) : std::vector<std::string>());
}

bool MountPoints::areNamed(std::string_view name) const {
    return std::ranges::binary_search(names_, name);
}

bool MountPoints::isAt(int folder, const char* path) const {
    if (!areNamed(fileName(path))) {
        return false;
    }
    struct statx status = {};
    if (statx(folder, path, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, STATX_TYPE, &status) != 0) {
        return false;
    }
    // Kernels before 5.8 do not tell and leave the attribute out.
    return (status.stx_attributes & status.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0;
}

} // namespace lumo::platform
