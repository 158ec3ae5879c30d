#include "Platform/Volume.h"

#include <sys/statvfs.h>

#include <algorithm>
#include <limits>

namespace lumo::platform {

namespace {

std::int64_t bytesOf(unsigned long long blocks, unsigned long long blockBytes) {
    unsigned long long bytes = 0;
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    if (__builtin_mul_overflow(blocks, blockBytes, &bytes) || bytes > static_cast<unsigned long long>(most)) {
        return most; // Some network file systems claim to have no end.
    }
    return static_cast<std::int64_t>(bytes);
}

} // namespace

std::optional<VolumeCapacity> volumeCapacity(const std::string& path) {
    struct statvfs volume = {};
    if (statvfs(path.c_str(), &volume) != 0) {
        return std::nullopt;
    }
    const std::int64_t available = bytesOf(volume.f_bavail, volume.f_frsize);
    return VolumeCapacity{bytesOf(volume.f_blocks, volume.f_frsize), available, available};
}

} // namespace lumo::platform
