#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumo::platform {

/// What giving up local copies of cloud files came to.
struct Eviction {
    std::int64_t releasedBytes = 0;
    std::int64_t fileCount = 0;
    bool hadFailures = false;
};

/// Removes the local copies of the downloaded cloud files at and below the paths; the files stay in the
/// cloud. Absent where the system has no such service.
std::optional<Eviction> evictLocalCopies(const std::vector<std::string>& paths);

} // namespace lumo::platform
