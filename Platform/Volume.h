#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace lumo::platform {

/// Capacities of a volume in bytes.
struct VolumeCapacity {
    std::int64_t total = 0;
    std::int64_t available = 0;             ///< To this user.
    std::int64_t availableForImportant = 0; ///< Counts what the system would free by itself, where it tells.
};

/// The capacities of the volume that holds the path; absent when the system does not say.
std::optional<VolumeCapacity> volumeCapacity(const std::string& path);

} // namespace lumo::platform
