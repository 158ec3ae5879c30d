#pragma once

#include "LumoCore/Inventories/DetailItem.h"

/// What Docker and Podman keep: images, stopped containers, volumes that no container uses, and what builds
/// left. Ids are "docker:", the tool, ":", "image", "container", "volume" or "cache", ":" and the tool's own
/// id.
namespace lumo::Containers {

/// Unavailable when neither tool is there, or none answers.
Inventory find(const InventoryQuery& query);

} // namespace lumo::Containers
