#include "Platform/LocalSnapshots.h"

namespace lumo::platform {

// File systems here may have snapshots, but none that the system would end by itself to make room.
std::string localSnapshotNames(const std::string&) {
    return {};
}

} // namespace lumo::platform
