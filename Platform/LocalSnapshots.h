#pragma once

#include <string>

namespace lumo::platform {

/// What the system's tool prints as the local snapshots of the volume that holds the path: names with their
/// dates in them, in the system's own shape. Empty where the tool fails and on systems without such
/// snapshots.
std::string localSnapshotNames(const std::string& path);

} // namespace lumo::platform
