#pragma once

#include "LumoCore/Inventories/DetailItem.h"

#include <string_view>

/// What Docker and Podman keep: images, stopped containers, volumes that no container uses, and what builds
/// left. Ids are "docker:", the tool, ":", "image", "container", "volume" or "cache", ":" and the tool's own
/// id.
namespace lumo::Containers {

/// Unavailable when neither tool is there, or none answers.
Inventory find(const InventoryQuery& query);

/// True for the id of a volume.
bool isVolume(std::string_view id);

} // namespace lumo::Containers
